# The headers that users include: what is installed and what the manual shows.

# tolv_public_headers(<variable> <folder>...): the headers below the folders, without tests' own and without those that private-headers.txt names. Folders and results are relative to the project.
function(tolv_public_headers variable)
  set(private_list ${PROJECT_SOURCE_DIR}/cmake/private-headers.txt)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${private_list})
  file(STRINGS ${private_list} private_headers REGEX "^[^#]")
  list(TRANSFORM ARGN APPEND "/*.h" OUTPUT_VARIABLE patterns)
  list(TRANSFORM patterns PREPEND "${PROJECT_SOURCE_DIR}/")
  file(GLOB_RECURSE headers RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS ${patterns})
  list(FILTER headers EXCLUDE REGEX "/testing/")
  list(REMOVE_ITEM headers ${private_headers})
  list(SORT headers)
  set(${variable} ${headers} PARENT_SCOPE)
endfunction()
