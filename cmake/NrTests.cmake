# Test programs: GoogleTest, one CTest entry a suite, and the target that a check builds.

set(NR_GTEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest's sources, from the packages libgtest-dev and googletest")
set(gtest_disable_pthreads ON CACHE BOOL "" FORCE)
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(${NR_GTEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
# The test programs' own runtime is static, and GoogleTest is linked into them.
set_target_properties(gtest PROPERTIES CXX_STANDARD 17)

# Compiled once for all test programs.
add_library(nr_test_main OBJECT ${CMAKE_SOURCE_DIR}/tests/support/TestMain.cpp)
target_link_libraries(nr_test_main PRIVATE nr_flags gtest)

# nr_tool(name sources...): a small Win32 program that the tests need beside them.
function(nr_tool name)
  add_executable(${name} ${ARGN})
  nr_finish(${name})
endfunction()

# What the tests share. A static library: each program takes from it what it uses.
file(GLOB support CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/support/*.cpp)
list(FILTER support EXCLUDE REGEX "/(AfxTestExtension|GuardPages|TestMain|keepalive|sheetprinter)\\.cpp$")
add_library(nr_test_support STATIC ${support})
target_link_libraries(nr_test_support PRIVATE nr_flags gtest)
target_include_directories(nr_test_support PRIVATE ${CMAKE_SOURCE_DIR}/Source ${CMAKE_SOURCE_DIR}/tests)
target_compile_options(nr_test_support PRIVATE $<$<CONFIG:RelWithDebInfo>:-O1>)
nr_precompile(nr_test_support <gtest/gtest.h>)

# nr_add_tests(name [WINDOWS] patterns... [LIBRARIES targets...])
#   WINDOWS    its suites need the display, the focus or the pointer: they run one at a time. In any other program the
#              suites whose name begins with "Desktop" do so too.
#   patterns   of its sources; a source belongs to the first program that has a pattern for it.
#   LIBRARIES  what it links, or "none"; left out: every DLL of the project.
# CTest asks the program itself for its suites when it starts; no list of them is kept.
function(nr_add_tests name)
  cmake_parse_arguments(arg "WINDOWS" "" "LIBRARIES" ${ARGN})
  if(NOT DEFINED arg_LIBRARIES)
    set(arg_LIBRARIES NRVectorViewOpen nrafx nrkx)
  endif()
  list(REMOVE_ITEM arg_LIBRARIES none)
  file(GLOB sources CONFIGURE_DEPENDS ${arg_UNPARSED_ARGUMENTS})
  get_property(taken GLOBAL PROPERTY nr_test_sources)
  list(REMOVE_ITEM sources ${taken} "")
  set_property(GLOBAL APPEND PROPERTY nr_test_sources ${sources})
  add_executable(${name} ${sources})
  nr_finish(${name})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/Source ${CMAKE_SOURCE_DIR}/tests)
  # The DLLs are what ships and is optimised fully; the tests' own code need not be, and builds faster.
  target_compile_options(${name} PRIVATE $<$<CONFIG:RelWithDebInfo>:-O1>)
  target_link_libraries(${name} PRIVATE nr_test_main nr_test_support gtest ${arg_LIBRARIES})
  if(arg_LIBRARIES)
    target_compile_options(${name} PRIVATE -fpch-preprocess)
    target_precompile_headers(${name} REUSE_FROM nr_test_support)
  endif()

  set(NR_TEST_NAME ${name})
  set(NR_TEST_WINDOWS ${arg_WINDOWS})
  set(suites ${CMAKE_CURRENT_BINARY_DIR}/${name}.suites.cmake)
  configure_file(${CMAKE_SOURCE_DIR}/cmake/NrSuites.cmake.in ${suites} @ONLY)
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${suites})
endfunction()

# nr_check_headers(folders...): the target `header_checks` compiles each header alone, and twice in a row.
function(nr_check_headers)
  set(sources)
  foreach(folder IN LISTS ARGN)
    file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.h)
    foreach(header IN LISTS headers)
      get_filename_component(stem ${header} NAME_WE)
      set(source ${CMAKE_BINARY_DIR}/header_checks/${folder}_${stem}.cpp)
      file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
      list(APPEND sources ${source})
    endforeach()
  endforeach()
  if(sources)
    add_library(header_checks OBJECT EXCLUDE_FROM_ALL ${sources})
    target_link_libraries(header_checks PRIVATE nr_flags gtest)
    target_include_directories(header_checks PRIVATE ${CMAKE_SOURCE_DIR}/Source ${CMAKE_SOURCE_DIR}/capi/include
                               ${CMAKE_SOURCE_DIR}/tests)
    target_compile_options(header_checks PRIVATE -O0 -g0)
  else()
    add_custom_target(header_checks)
  endif()
endfunction()
