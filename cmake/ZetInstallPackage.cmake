# Installs the package of the build in BUILD into FOLDER, which is emptied first, and lists there what is in it.
file(REMOVE_RECURSE "${FOLDER}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --component package --prefix "${FOLDER}" --strip
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

set(sources "${CMAKE_CURRENT_LIST_DIR}/..")
include("${CMAKE_CURRENT_LIST_DIR}/ZetCommitTime.cmake")
zet_commit_time(seconds "${sources}")
if(NOT seconds)
  # There is no Git, for example in an unpacked archive of the sources.
  string(TIMESTAMP seconds "%s" UTC)
endif()
find_program(ZET_PYTHON NAMES python3 python REQUIRED)
execute_process(COMMAND "${ZET_PYTHON}" "${sources}/tools/windows/list-contents" "${FOLDER}" --time ${seconds} "@${BUILD}/contents.txt"
  COMMAND_ERROR_IS_FATAL ANY)
