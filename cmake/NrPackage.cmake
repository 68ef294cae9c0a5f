# What ships: `cmake --install BUILD --prefix FOLDER`, or `cpack --config BUILD/CPackConfig.cmake` for a zip of the same.
# The layer of afx/ alone is the component "afx", which afx/CMakeLists.txt installs.
include(CMakePackageConfigHelpers)
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON) # The tests need not be built for it.

# nr_public_headers(result): the headers that a host may include: those with an exported class or function, what these
# include, and the numbers of the resources.
function(nr_public_headers result)
  file(GLOB waiting CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/Source/*.h ${CMAKE_SOURCE_DIR}/render/*.h)
  foreach(header IN LISTS waiting)
    get_filename_component(name ${header} NAME)
    set(path_of_${name} ${header})
    file(STRINGS ${header} marked REGEX "NRVECTORVIEW_API " LIMIT_COUNT 1)
    if(NOT marked AND NOT name STREQUAL resource.h)
      list(REMOVE_ITEM waiting ${header})
    endif()
  endforeach()
  while(waiting)
    list(POP_FRONT waiting header)
    list(APPEND found ${header})
    file(STRINGS ${header} includes REGEX "^#include \"")
    foreach(line IN LISTS includes)
      string(REGEX REPLACE ".*[\"/]([^\"/]+)\".*" "\\1" name "${line}")
      set(other ${path_of_${name}})
      if(NOT other IN_LIST found AND NOT other IN_LIST waiting)
        list(APPEND waiting ${other})
      endif()
    endforeach()
  endwhile()
  set(${result} ${found} PARENT_SCOPE)
endfunction()

nr_public_headers(headers)
file(GLOB kx_headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/kx/*.h)
install(FILES ${headers} DESTINATION include/NRVectorView)
install(FILES ${kx_headers} DESTINATION include/nrkx)
# The folders of the sources are no part of the package.
get_target_property(folders NRVectorView INTERFACE_INCLUDE_DIRECTORIES)
set_target_properties(NRVectorView PROPERTIES INTERFACE_INCLUDE_DIRECTORIES
  "$<BUILD_INTERFACE:${folders}>;$<INSTALL_INTERFACE:include/NRVectorView>")
install(TARGETS NRVectorView nrkx EXPORT NRVectorView RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
foreach(program nrvv_demo nrvparm nrv)
  if(TARGET ${program})
    install(TARGETS ${program} RUNTIME DESTINATION bin)
  endif()
endforeach()

# The C interface: header, list of names, and an import library for Visual C++ made from the list.
set(c_names ${CMAKE_SOURCE_DIR}/capi/nrview.def)
if(EXISTS ${c_names})
  set(c_library ${CMAKE_BINARY_DIR}/package/NRVectorView.lib)
  find_program(NR_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14 REQUIRED)
  add_custom_command(OUTPUT ${c_library}
    COMMAND ${NR_DLLTOOL} -m i386:x86-64 -D NRVectorView.dll -d ${c_names} -l ${c_library} DEPENDS ${c_names} VERBATIM)
  add_custom_target(nr_c_library ALL DEPENDS ${c_library})
  install(FILES ${CMAKE_SOURCE_DIR}/capi/include/nrview.h DESTINATION include/NRVectorView)
  install(FILES ${c_names} DESTINATION lib RENAME NRVectorView.def)
  install(FILES ${c_library} DESTINATION lib)
endif()

# find_package(NRVectorView CONFIG) in the unpacked folder.
set(generated ${CMAKE_BINARY_DIR}/package)
configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/NRVectorViewConfig.cmake.in
  ${generated}/NRVectorViewConfig.cmake INSTALL_DESTINATION cmake NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${generated}/NRVectorViewConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${generated}/NRVectorViewConfig.cmake ${generated}/NRVectorViewConfigVersion.cmake DESTINATION cmake)
install(EXPORT NRVectorView NAMESPACE NRVectorView:: FILE NRVectorViewTargets.cmake DESTINATION cmake)

install(DIRECTORY ${CMAKE_SOURCE_DIR}/samples DESTINATION .)
install(FILES ${CMAKE_SOURCE_DIR}/demo/MinimalHost.cpp DESTINATION samples/hosts)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/ DESTINATION doc)
install(FILES ${CMAKE_SOURCE_DIR}/CHANGELOG.md DESTINATION doc)
install(FILES ${CMAKE_SOURCE_DIR}/cmake/package.md RENAME README.md DESTINATION .)

# The reference, where Doxygen is: the target makes it, and then it is installed as well.
find_program(NR_DOXYGEN doxygen)
if(NR_DOXYGEN)
  set(reference_input ${headers} ${kx_headers} ${CMAKE_SOURCE_DIR}/capi/include/nrview.h)
  list(JOIN reference_input " " reference_input)
  configure_file(${CMAKE_SOURCE_DIR}/cmake/Doxyfile.in ${generated}/Doxyfile @ONLY)
  add_custom_target(reference COMMAND ${NR_DOXYGEN} ${generated}/Doxyfile VERBATIM)
endif()
install(DIRECTORY ${generated}/reference DESTINATION doc OPTIONAL)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION}-mingw-x64)
set(CPACK_STRIP_FILES ON) # The debug information stays in the build folder.
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
