# Compresses the man pages that CPack is about to pack, the same each time.
find_program(GZIP gzip REQUIRED)
file(GLOB_RECURSE pages ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/man[1-9]/*.[1-9])
foreach(page ${pages})
  execute_process(COMMAND ${GZIP} -9n ${page} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
