# What every target of the project shares: warnings, definitions, static runtime, the guarded build.

add_library(nr_flags INTERFACE)
target_compile_definitions(nr_flags INTERFACE UNICODE _UNICODE WINVER=0x0601 _WIN32_WINNT=0x0601 _WIN32_IE=0x0800
                                              NOMINMAX STRICT)
target_include_directories(nr_flags INTERFACE ${CMAKE_SOURCE_DIR}/afx ${CMAKE_SOURCE_DIR}/kx)
target_compile_options(nr_flags INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Werror
  # Message maps cast handler pointers to one common type and back; each cast is made in one macro.
  -Wno-cast-function-type
  # -Wconversion also warns about int to float and sign changes that GDI signatures force everywhere.
  -Wno-sign-conversion
  # When GCC 12 optimises, it takes vectors of known length and the system's own reads off a segment register for
  # overruns. The guarded build catches the real ones.
  $<$<CONFIG:RelWithDebInfo>:-Wno-array-bounds>
  -fno-strict-aliasing
  # Exactness: no fused or excess-precision arithmetic, so that float steps stay float steps.
  -ffp-contract=off
  -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)
# Each module carries its own runtime, so that only the project's DLLs and Windows' own remain to ship.
target_link_options(nr_flags INTERFACE -static)

if(NR_GUARDED)
  target_compile_options(nr_flags INTERFACE -fsanitize=undefined -fsanitize-undefined-trap-on-error
                                            -fno-sanitize=vptr)
  target_compile_definitions(nr_flags INTERFACE _GLIBCXX_ASSERTIONS NR_GUARDED)
endif()

# nr_finish(target): every module links the mathematics of the system's runtime in place of the compiler's, and in the
# guarded build its own operator new and delete.
function(nr_finish target)
  target_link_libraries(${target} PRIVATE nr_flags)
  target_sources(${target} PRIVATE $<TARGET_OBJECTS:nr_system_math>)
  set_target_properties(${target} PROPERTIES PREFIX "")
  if(NR_GUARDED)
    target_sources(${target} PRIVATE ${CMAKE_SOURCE_DIR}/tests/support/GuardPages.cpp)
  endif()
endfunction()

# nr_precompile(target [headers...]): the target's sources read cmake/precompiled.h, and these headers, already compiled.
function(nr_precompile target)
  target_precompile_headers(${target} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/precompiled.h ${ARGN})
  # Without this option the compiler cache can keep nothing that was compiled so.
  target_compile_options(${target} PRIVATE -fpch-preprocess)
endfunction()

# nr_dll(name sources...): a DLL with its import library under lib/.
function(nr_dll name)
  add_library(${name} SHARED ${ARGN})
  nr_finish(${name})
  set_target_properties(${name} PROPERTIES IMPORT_PREFIX "lib" LINKER_LANGUAGE CXX)
endfunction()

# nr_version(target description): the version resource of a DLL or a program. The version is the project's, in the
# CMakeLists.txt at the root.
function(nr_version target NR_DESCRIPTION)
  get_target_property(type ${target} TYPE)
  set(NR_FILE ${target}.dll)
  set(NR_FILE_TYPE VFT_DLL)
  if(type STREQUAL EXECUTABLE)
    set(NR_FILE ${target}.exe)
    set(NR_FILE_TYPE VFT_APP)
  endif()
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
  configure_file(${CMAKE_SOURCE_DIR}/cmake/version.rc.in ${script} @ONLY)
  target_sources(${target} PRIVATE ${script})
endfunction()

# windres reads UTF-8 resource scripts.
set(CMAKE_RC_FLAGS "-c 65001 ${CMAKE_RC_FLAGS}")
