# zet_commit_time(RESULT SOURCES): the seconds of the last commit, or those that SOURCE_DATE_EPOCH chooses. They stand for the
# time of the build wherever a file must name one. Empty where there is neither.
function(zet_commit_time result sources)
  set(seconds "$ENV{SOURCE_DATE_EPOCH}")
  find_program(git git)
  if(seconds STREQUAL "" AND git)
    execute_process(COMMAND "${git}" -C "${sources}" log -1 --format=%ct
      OUTPUT_VARIABLE seconds ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
  endif()
  set(${result} "${seconds}" PARENT_SCOPE)
endfunction()
