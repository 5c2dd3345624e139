cmake_minimum_required(VERSION 3.25)
# cmake -DSOURCES=the project -DOUTPUT=a header -P ZetCommit.cmake
# Writes the header that says of which commit the sources are. It stays untouched while it is right, so that nothing is
# compiled anew. The text is empty where the sources are in no Git repository of their own.
set(commit "")
find_program(git git)
# git(RESULT arguments...): the result is empty when Git refuses.
function(git result)
  execute_process(COMMAND "${git}" -C "${SOURCES}" ${ARGN}
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT status EQUAL 0)
    set(output "")
  endif()
  set(${result} "${output}" PARENT_SCOPE)
endfunction()
if(git)
  git(root rev-parse --show-toplevel)
  file(REAL_PATH "${SOURCES}" sources)
  # The sources may have been unpacked inside somebody else's repository, whose commits say nothing about them.
  if(root AND root STREQUAL sources)
    git(commit rev-parse --short=10 HEAD)
    git(changes status --porcelain --untracked-files=no)
    if(commit AND changes)
      string(APPEND commit ", changed")
    endif()
  endif()
endif()
file(CONFIGURE OUTPUT "${OUTPUT}" CONTENT "#pragma once\n\n#define ZET_COMMIT \"@commit@\"\n" @ONLY)
