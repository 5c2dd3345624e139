cmake_minimum_required(VERSION 3.25)
# cmake -DSCRIPT=ZetCommit.cmake -DWORK=a scratch folder -P Commit.cmake
# Shows what the script writes for a repository, a changed one, a folder of another repository, and no repository.
find_program(git git REQUIRED)
file(REMOVE_RECURSE "${WORK}")
set(repository "${WORK}/repository")
file(MAKE_DIRECTORY "${repository}/inside" "${WORK}/plain")

# Neither the user's settings nor a repository around this folder plays a part.
set(ENV{GIT_CONFIG_GLOBAL} /dev/null)
set(ENV{GIT_CONFIG_SYSTEM} /dev/null)
set(ENV{GIT_CEILING_DIRECTORIES} "${WORK}")
unset(ENV{GIT_DIR})
unset(ENV{GIT_WORK_TREE})
unset(ENV{GIT_INDEX_FILE})

function(git)
  execute_process(COMMAND "${git}" -C "${repository}" -c user.name=Somebody -c user.email=somebody@example.org ${ARGN}
    OUTPUT_VARIABLE output ERROR_VARIABLE output OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(said "${output}" PARENT_SCOPE)
endfunction()

# expect(FOLDER PATTERN): the header for the folder's sources must match.
function(expect folder pattern)
  set(header "${WORK}/ZetCommit.h")
  execute_process(COMMAND ${CMAKE_COMMAND} "-DSOURCES=${folder}" "-DOUTPUT=${header}" -P "${SCRIPT}"
    COMMAND_ERROR_IS_FATAL ANY)
  file(READ "${header}" content)
  if(NOT content MATCHES "^#pragma once\n\n#define ZET_COMMIT \"${pattern}\"\n$")
    message(FATAL_ERROR "${folder}: ${pattern} was expected, and this is it:\n${content}")
  endif()
endfunction()

expect("${WORK}/plain" "")
git(init -q)
# A repository without a commit has none to tell.
expect("${repository}" "")
file(WRITE "${repository}/file" "one")
git(add file)
git(commit -q -m first)
git(rev-parse --short=10 HEAD)
expect("${repository}" "${said}")
expect("${repository}/inside" "")
file(WRITE "${repository}/stranger" "not a part of the sources")
expect("${repository}" "${said}")
file(WRITE "${repository}/file" "two")
expect("${repository}" "${said}, changed")

# A header that is right is not written again.
git(commit -q -a -m second)
git(rev-parse --short=10 HEAD)
expect("${repository}" "${said}")
set(header "${WORK}/ZetCommit.h")
file(TIMESTAMP "${header}" written "%Y-%m-%dT%H:%M:%S.%f")
expect("${repository}" "${said}")
file(TIMESTAMP "${header}" now "%Y-%m-%dT%H:%M:%S.%f")
if(NOT written STREQUAL now)
  message(FATAL_ERROR "the header was written although nothing had changed: ${written}, ${now}")
endif()
file(REMOVE_RECURSE "${WORK}")
