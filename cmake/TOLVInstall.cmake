# How the libraries are installed: headers below include/tolvgraphing in the folders that the sources have, and a CMake package whose components are the libraries.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(TOLV_INCLUDE_FOLDER ${CMAKE_INSTALL_INCLUDEDIR}/tolvgraphing)
set(TOLV_PACKAGE_FOLDER ${CMAKE_INSTALL_LIBDIR}/cmake/TOLVGraphing)

# tolv_install(<target> <component> <folder>...): the library as TOLVGraphing::<component> and the headers below the folders, which are relative to the project.
function(tolv_install target component)
  if(NOT TOLVGRAPHING_INSTALL)
    return()
  endif()
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${component})
  install(TARGETS ${target} EXPORT TOLVGraphing${component}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(EXPORT TOLVGraphing${component} FILE TOLVGraphing${component}Targets.cmake NAMESPACE TOLVGraphing:: DESTINATION ${TOLV_PACKAGE_FOLDER})
  foreach(folder ${ARGN})
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder}/ DESTINATION ${TOLV_INCLUDE_FOLDER}/${folder} FILES_MATCHING PATTERN "*.h" PATTERN "testing" EXCLUDE)
  endforeach()
endfunction()

# tolv_install_program(<target>): the program goes where programs are.
function(tolv_install_program target)
  if(TOLVGRAPHING_INSTALL)
    install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  endif()
endfunction()

# tolv_install_package(): the files that find_package reads.
function(tolv_install_package)
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/TOLVGraphingConfig.cmake.in ${PROJECT_BINARY_DIR}/TOLVGraphingConfig.cmake
    INSTALL_DESTINATION ${TOLV_PACKAGE_FOLDER})
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/TOLVGraphingConfigVersion.cmake COMPATIBILITY SameMinorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/TOLVGraphingConfig.cmake ${PROJECT_BINARY_DIR}/TOLVGraphingConfigVersion.cmake DESTINATION ${TOLV_PACKAGE_FOLDER})
endfunction()
