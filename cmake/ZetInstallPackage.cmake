# Installs the package of the build in BUILD into FOLDER, which is emptied first.
file(REMOVE_RECURSE "${FOLDER}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --component package --prefix "${FOLDER}" --strip
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
