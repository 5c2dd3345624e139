# Installs the package of the build in BUILD into FOLDER, with nothing in it of an earlier time.
file(REMOVE_RECURSE "${FOLDER}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --component package --prefix "${FOLDER}" --strip
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
