# The Debian packages, as `cpack -G DEB` makes them of a build with shared libraries below /usr (preset "package"), and the source archive.
# One install component is one package: runtime libraries each by itself and named after its SONAME, headers by what they need, the two programs, the manual.
if(NOT (TOLVGRAPHING_INSTALL AND PROJECT_IS_TOP_LEVEL))
  return()
endif()

set(abi ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

set(CPACK_PACKAGE_NAME tolvgraphing)
set(CPACK_PACKAGE_VENDOR "The TOLVGraphing developers")
set(CPACK_PACKAGE_CONTACT "The TOLVGraphing developers <maintainers@tolvgraphing.dev>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "two-dimensional measurement graphs")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/TOLVGraphing ${PROJECT_BINARY_DIR}/desktop ${PROJECT_BINARY_DIR}/opengl ${PROJECT_BINARY_DIR}/hosts/qt6)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SOURCE tolvgraphing)

file(STRINGS ${PROJECT_SOURCE_DIR}/packaging/debian/changelog changelog_head LIMIT_COUNT 1)
if(NOT changelog_head MATCHES "^tolvgraphing \\(${PROJECT_VERSION}-[0-9]+\\) ")
  message(FATAL_ERROR "packaging/debian/changelog begins with \"${changelog_head}\", but the version of the project is ${PROJECT_VERSION}: give it an entry of its own there")
endif()
string(REGEX REPLACE "^tolvgraphing \\([^-]*-([0-9]+)\\).*" "\\1" CPACK_DEBIAN_PACKAGE_RELEASE "${changelog_head}")
set(debian_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

# What every package of ours has to carry.
find_program(GZIP gzip REQUIRED)
set(debian_changelog ${PROJECT_BINARY_DIR}/packaging/changelog.Debian.gz)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/packaging)
set(project_changelog ${PROJECT_BINARY_DIR}/packaging/changelog.gz)
execute_process(COMMAND ${GZIP} -9nc ${PROJECT_SOURCE_DIR}/packaging/debian/changelog OUTPUT_FILE ${debian_changelog} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${GZIP} -9nc ${PROJECT_SOURCE_DIR}/CHANGELOG.md OUTPUT_FILE ${project_changelog} COMMAND_ERROR_IS_FATAL ANY)
set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/packaging/debian/changelog ${PROJECT_SOURCE_DIR}/CHANGELOG.md)

# tolv_package(<component> PACKAGE <name> SECTION <section> SUMMARY <text> DESCRIPTION <text> [DEPENDS <relation>...] [RECOMMENDS <relation>...] [SUGGESTS <relation>...] [ARCHITECTURE all] [LIBRARY <target>]):
# the Debian package of an install component. Of a library also the symbols that it offers, for those who depend on it.
macro(tolv_package component)
  cmake_parse_arguments(arg "" "PACKAGE;SECTION;SUMMARY;DESCRIPTION;ARCHITECTURE;LIBRARY" "DEPENDS;RECOMMENDS;SUGGESTS" ${ARGN})
  string(TOUPPER ${component} upper)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  list(JOIN arg_DEPENDS ", " CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS)
  list(JOIN arg_RECOMMENDS ", " CPACK_DEBIAN_${upper}_PACKAGE_RECOMMENDS)
  list(JOIN arg_SUGGESTS ", " CPACK_DEBIAN_${upper}_PACKAGE_SUGGESTS)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${arg_PACKAGE})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${arg_SECTION})
  set(CPACK_DEBIAN_${upper}_PACKAGE_ARCHITECTURE ${arg_ARCHITECTURE})
  set(CPACK_TOLV_SUMMARY_${arg_PACKAGE} "${arg_SUMMARY}")
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${arg_DESCRIPTION}")
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/debian/copyright ${debian_changelog} ${project_changelog} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${arg_PACKAGE} COMPONENT ${component} EXCLUDE_FROM_ALL)
  if(arg_LIBRARY)
    set(control ${PROJECT_BINARY_DIR}/packaging/${arg_PACKAGE})
    set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA ${control}/symbols ${control}/shlibs ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)
    add_custom_command(OUTPUT ${control}/symbols ${control}/shlibs
      COMMAND ${PROJECT_SOURCE_DIR}/packaging/library-control ${arg_PACKAGE} ${PROJECT_VERSION} ${debian_version} $<TARGET_FILE:${arg_LIBRARY}> ${control}
      DEPENDS ${arg_LIBRARY} ${PROJECT_SOURCE_DIR}/packaging/library-control
      VERBATIM)
    list(APPEND library_controls ${control}/symbols ${control}/shlibs)
  endif()
endmacro()

set(CPACK_COMPONENTS_ALL)
set(library_controls)
set(what "TOLVGraphing draws two-dimensional measurement graphs of any length, each\npixel column with the true minimum and maximum of its samples, and the same\npicture on screen, paper and in files.")
tolv_package(libtolvgraphing PACKAGE libtolvgraphing${abi} SECTION libs LIBRARY TOLVGraphing
  SUMMARY "measurement graphs - core library"
  DESCRIPTION "${what}\n.\nThis package contains the core: series, axes, drawing strategies and views.")
if(TARGET TOLVGraphingDesktop)
  tolv_package(libtolvgraphingdesktop PACKAGE libtolvgraphingdesktop${abi} SECTION libs LIBRARY TOLVGraphingDesktop
    DEPENDS "libtolvgraphing${abi} (= ${debian_version})" fonts-urw-base35 RECOMMENDS fonts-liberation2
    SUMMARY "measurement graphs - desktop library"
    DESCRIPTION "${what}\n.\nThis package contains what draws them on a Linux desktop: text, PDF,\nPostScript, SVG, PNG and TIFF, measurement files, archives and printing.")
endif()
if(TARGET TOLVGraphingOpenGL)
  tolv_package(libtolvgraphingopengl PACKAGE libtolvgraphingopengl${abi} SECTION libs LIBRARY TOLVGraphingOpenGL
    DEPENDS "libtolvgraphing${abi} (= ${debian_version})"
    SUMMARY "measurement graphs - OpenGL library"
    DESCRIPTION "${what}\n.\nThis package contains texts and curves in OpenGL scenes.")
endif()
if(TARGET TOLVGraphingQt6)
  tolv_package(libtolvgraphingqt6 PACKAGE libtolvgraphingqt6-${abi} SECTION libs LIBRARY TOLVGraphingQt6
    DEPENDS "libtolvgraphingdesktop${abi} (= ${debian_version})" "libtolvgraphing${abi} (= ${debian_version})"
    SUMMARY "measurement graphs - Qt 6 library"
    DESCRIPTION "${what}\n.\nThis package contains the Qt 6 widget with clipboard, printing and settings.")
endif()
set(dev_depends "libtolvgraphing${abi} (= ${debian_version})")
if(TARGET TOLVGraphingDesktop)
  list(APPEND dev_depends "libtolvgraphingdesktop${abi} (= ${debian_version})")
endif()
tolv_package(libtolvgraphing-dev PACKAGE libtolvgraphing-dev SECTION libdevel DEPENDS ${dev_depends} SUGGESTS libtolvgraphing-doc
  SUMMARY "measurement graphs - development files"
  DESCRIPTION "${what}\n.\nThis package contains headers, CMake package and pkg-config files of the core\nand the desktop library.")
if(TARGET TOLVGraphingOpenGL)
  tolv_package(libtolvgraphing-opengl-dev PACKAGE libtolvgraphing-opengl-dev SECTION libdevel
    DEPENDS "libtolvgraphingopengl${abi} (= ${debian_version})" "libtolvgraphing-dev (= ${debian_version})"
    SUMMARY "measurement graphs - OpenGL development files"
    DESCRIPTION "${what}\n.\nThis package contains headers, CMake package and pkg-config files of the\nOpenGL library.")
endif()
if(TARGET TOLVGraphingQt6)
  tolv_package(libtolvgraphing-qt6-dev PACKAGE libtolvgraphing-qt6-dev SECTION libdevel
    DEPENDS "libtolvgraphingqt6-${abi} (= ${debian_version})" "libtolvgraphing-dev (= ${debian_version})" qt6-base-dev
    SUMMARY "measurement graphs - Qt 6 development files"
    DESCRIPTION "${what}\n.\nThis package contains headers, CMake package and pkg-config files of the Qt 6\nlibrary.")
endif()
if(TARGET tolvgraph)
  tolv_package(tolvgraph PACKAGE tolvgraph SECTION science
    DEPENDS "libtolvgraphingdesktop${abi} (= ${debian_version})" "libtolvgraphing${abi} (= ${debian_version})" SUGGESTS tolvgraph-viewer
    SUMMARY "draws measurement graphs from the command line"
    DESCRIPTION "Reads delimited text, sound files, NumPy arrays and raw numbers of any length\nand writes graphs of them as PDF, PostScript, EPS, SVG, PNG and TIFF.")
endif()
if(TARGET tolvgraph-viewer)
  tolv_package(tolvgraph-viewer PACKAGE tolvgraph-viewer SECTION science
    DEPENDS "libtolvgraphingqt6-${abi} (= ${debian_version})" "libtolvgraphingdesktop${abi} (= ${debian_version})" "libtolvgraphing${abi} (= ${debian_version})" SUGGESTS tolvgraph
    SUMMARY "shows measurement graphs in a window"
    DESCRIPTION "Opens delimited text, sound files, NumPy arrays and raw numbers of any length,\nzooms, pans, sets markers, copies as vector graphics, prints and exports.")
endif()
if(TOLVGRAPHING_MANUAL AND TARGET manual)
  tolv_package(libtolvgraphing-doc PACKAGE libtolvgraphing-doc SECTION doc ARCHITECTURE all
    SUMMARY "measurement graphs - manual"
    DESCRIPTION "${what}\n.\nThis package contains the manual: pages to begin with, the reference of all\nheaders, the gallery and the example programs.")
endif()
# Only Debian's tools write them; what is not packed needs none.
find_program(DPKG_GENSYMBOLS dpkg-gensymbols)
if(BUILD_SHARED_LIBS AND DPKG_GENSYMBOLS)
  add_custom_target(library-controls ALL DEPENDS ${library_controls})
endif()

# Debian's man pages are compressed.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/CompressManPages.cmake)
# What CPack cannot say: a line of its own for each package, and no maintainer scripts that call ldconfig where there is a trigger.
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/FinishPackages.cmake)

# The source archive: what git knows, and nothing else.
set(CPACK_SOURCE_GENERATOR TXZ)
include(CPack)
