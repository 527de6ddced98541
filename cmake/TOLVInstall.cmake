# How the libraries and programs are installed: public headers below include/tolvgraphing in the folders that the sources have, a CMake package whose components are the libraries, and a pkg-config file for each library.
# Every rule belongs to an install component named like the Debian package that it goes to, without version: see packaging/TOLVPackages.cmake.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(TOLV_INCLUDE_FOLDER ${CMAKE_INSTALL_INCLUDEDIR}/tolvgraphing)
set(TOLV_PACKAGE_FOLDER ${CMAKE_INSTALL_LIBDIR}/cmake/TOLVGraphing)

# Where zsh looks for completions: Debian's own packages have a folder of theirs.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(TOLV_ZSH_FOLDER ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
else()
  set(TOLV_ZSH_FOLDER ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
endif()

# Shared libraries outside of the system's folders: programs find them, and they each other, wherever the tree lies. Below /usr the system finds them, and Debian wants no other places to look at.
if(BUILD_SHARED_LIBS AND NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  cmake_path(SET program_folder NORMALIZE ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR})
  cmake_path(SET library_folder NORMALIZE ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR})
  cmake_path(RELATIVE_PATH library_folder BASE_DIRECTORY ${program_folder})
  set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/${library_folder}")
endif()

# tolv_install(<target> COMPONENT <component> PACKAGE <name> DEV_PACKAGE <name> HEADERS <folder>... DESCRIPTION <text>
#              [REQUIRES <pkg-config module>...] [PRIVATE_REQUIRES <pkg-config module>...] [PRIVATE_LIBS <linker option>...]):
# the library as TOLVGraphing::<component> with the public headers below the folders, which are relative to the project. A static library hands what it is built on to whoever links it, a shared one only REQUIRES.
function(tolv_install target)
  if(NOT TOLVGRAPHING_INSTALL)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "COMPONENT;PACKAGE;DEV_PACKAGE;DESCRIPTION" "HEADERS;REQUIRES;PRIVATE_REQUIRES;PRIVATE_LIBS")
  install(TARGETS ${target} EXPORT TOLVGraphing${arg_COMPONENT}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${arg_DEV_PACKAGE}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${arg_PACKAGE} NAMELINK_COMPONENT ${arg_DEV_PACKAGE})
  install(EXPORT TOLVGraphing${arg_COMPONENT} FILE TOLVGraphing${arg_COMPONENT}Targets.cmake NAMESPACE TOLVGraphing:: DESTINATION ${TOLV_PACKAGE_FOLDER} COMPONENT ${arg_DEV_PACKAGE})
  tolv_public_headers(headers ${arg_HEADERS})
  foreach(header ${headers})
    cmake_path(GET header PARENT_PATH folder)
    install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${TOLV_INCLUDE_FOLDER}/${folder} COMPONENT ${arg_DEV_PACKAGE})
  endforeach()

  # pkg-config. Its folders are relative to the file, so that an installed tree can be moved.
  string(TOLOWER "tolvgraphing-${arg_COMPONENT}" module)
  if(arg_COMPONENT STREQUAL "Graphing")
    set(module tolvgraphing)
  endif()
  set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${pkgconfig_folder} OUTPUT_VARIABLE to_prefix)
  set(pc_description "${arg_DESCRIPTION}")
  set(pc_name TOLVGraphing::${arg_COMPONENT})
  set(pc_library ${target})
  set(pc_definition)
  set(pc_private_libs)
  set(pc_requires ${arg_REQUIRES})
  if(NOT BUILD_SHARED_LIBS)
    set(pc_definition " -DTOLVGRAPHING_STATIC")
    list(APPEND pc_requires ${arg_PRIVATE_REQUIRES})
    list(JOIN arg_PRIVATE_LIBS " " pc_private_libs)
    string(PREPEND pc_private_libs " ")
  endif()
  list(JOIN pc_requires ", " pc_requires)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/module.pc.in ${PROJECT_BINARY_DIR}/${module}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${module}.pc DESTINATION ${pkgconfig_folder} COMPONENT ${arg_DEV_PACKAGE})
endfunction()

# tolv_install_program(<target> <package>): the program goes where programs are.
function(tolv_install_program target package)
  if(TOLVGRAPHING_INSTALL)
    install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${package})
  endif()
endfunction()

# tolv_install_package(): the files that find_package reads.
function(tolv_install_package)
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/TOLVGraphingConfig.cmake.in ${PROJECT_BINARY_DIR}/TOLVGraphingConfig.cmake
    INSTALL_DESTINATION ${TOLV_PACKAGE_FOLDER})
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/TOLVGraphingConfigVersion.cmake COMPATIBILITY SameMinorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/TOLVGraphingConfig.cmake ${PROJECT_BINARY_DIR}/TOLVGraphingConfigVersion.cmake DESTINATION ${TOLV_PACKAGE_FOLDER} COMPONENT libtolvgraphing-dev)
endfunction()
