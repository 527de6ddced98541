# How every target of this project is compiled.

# What is built in beside the program itself: checks of a sanitizer, counters of lines, the tracing of libFuzzer.
set(tolv_instrumentation)
set(tolv_link_instrumentation)
if(TOLVGRAPHING_SANITIZE STREQUAL "thread")
  list(APPEND tolv_instrumentation -fsanitize=thread -fno-omit-frame-pointer)
  list(APPEND tolv_link_instrumentation -fsanitize=thread)
elseif(TOLVGRAPHING_SANITIZE)
  list(APPEND tolv_instrumentation -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  list(APPEND tolv_link_instrumentation -fsanitize=address,undefined)
endif()
if(TOLVGRAPHING_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "TOLVGRAPHING_FUZZ needs Clang, which brings libFuzzer; the compiler is ${CMAKE_CXX_COMPILER_ID}")
  endif()
  list(APPEND tolv_instrumentation -fsanitize=fuzzer-no-link)
endif()
if(TOLVGRAPHING_COVERAGE)
  list(APPEND tolv_instrumentation --coverage -fprofile-update=prefer-atomic)
  list(APPEND tolv_link_instrumentation --coverage)
endif()

# tolv_compile(<target>): the language level, the arithmetic rules and the warnings.
# Results are defined to the last bit, one rounding per written operation, so multiply and add are never fused.
function(tolv_compile target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON)
  target_compile_options(${target} PRIVATE
    -ffp-contract=off -fno-fast-math
    -Wall -Wextra -Wconversion -Wdouble-promotion -Wshadow
    # With -O3 GCC 12 warns of its own strings.
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
  if(TOLVGRAPHING_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  target_compile_options(${target} PRIVATE ${tolv_instrumentation})
  target_link_options(${target} PRIVATE ${tolv_link_instrumentation})
endfunction()

# tolv_library(<target> <component> <source>...): one of the libraries, as TOLVGraphing::<component>, static or, with BUILD_SHARED_LIBS, shared.
# Only what carries TOLV_EXPORT can be seen from outside of a shared library. Until version 1 every minor version may change the binary interface, so the SONAME has both numbers.
function(tolv_library target component)
  add_library(${target} ${ARGN})
  add_library(TOLVGraphing::${component} ALIAS ${target})
  tolv_compile(${target})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${component}
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  if(BUILD_SHARED_LIBS)
    set(map ${PROJECT_BINARY_DIR}/exported-symbols.map)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/exported-symbols.map.in ${map} @ONLY)
    target_link_options(${target} PRIVATE -Wl,--version-script=${map})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${map})
    if(NOT TOLVGRAPHING_SANITIZE)
      target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
  else()
    target_compile_definitions(${target} PUBLIC TOLVGRAPHING_STATIC)
  endif()
endfunction()

# tolv_sources(<variable> <folder>...): the .cpp files below the folders, without the tests beside them.
function(tolv_sources variable)
  set(found)
  foreach(folder ${ARGN})
    file(GLOB_RECURSE files CONFIGURE_DEPENDS ${folder}/*.cpp)
    list(APPEND found ${files})
  endforeach()
  list(FILTER found EXCLUDE REGEX "_test\\.cpp$")
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

# tolv_test_sources(<variable> <folder>...): the *_test.cpp files below the folders.
function(tolv_test_sources variable)
  set(found)
  foreach(folder ${ARGN})
    file(GLOB_RECURSE files CONFIGURE_DEPENDS ${folder}/*_test.cpp)
    list(APPEND found ${files})
  endforeach()
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

# tolv_compile_tests(<target>): the same for a test program. Tests are many, short and run once, so they are compiled quickly rather than well;
# the libraries under test keep their own options.
function(tolv_compile_tests target)
  tolv_compile(${target})
  target_compile_options(${target} PRIVATE -O0 -g1)
endfunction()
