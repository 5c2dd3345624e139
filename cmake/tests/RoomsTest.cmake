cmake_minimum_required(VERSION 3.25)
# cmake -DWORK=a folder -P RoomsTest.cmake
# Rooms.cmake looks at small trees. Each CASE is the words that its answer must have, and the tree: FILE=INCLUDE.
function(expect words)
  cmake_parse_arguments(PARSE_ARGV 1 CASE "" "" "TREE")
  file(REMOVE_RECURSE "${WORK}")
  foreach(entry IN LISTS CASE_TREE)
    string(REGEX MATCH "^(.+)=(.+)$" found "${entry}")
    file(APPEND "${WORK}/${CMAKE_MATCH_1}" "#pragma once\n#  include ${CMAKE_MATCH_2} // for the test\n")
  endforeach()
  execute_process(COMMAND "${CMAKE_COMMAND}" "-DROOT=${WORK}" -P "${CMAKE_CURRENT_LIST_DIR}/Rooms.cmake"
    OUTPUT_VARIABLE answer ERROR_VARIABLE answer)
  if(NOT answer MATCHES "${words}")
    message(SEND_ERROR "Expected \"${words}\" of ${CASE_TREE}, and there was:\n${answer}")
  endif()
endfunction()

set(two platform/lib/src/up/A.cpp=<lib/down/B.h> platform/lib/include/lib/down/B.h=<vector>
  platform/lib/src/down/B_win.cpp="up/A.h" platform/lib/src/up/A.h=<vector>)
set(file platform/lib/src/down/B_win.cpp)
expect("lib/down uses lib/up.*\n +${file} includes up/A.h" TREE ${two})
expect("lib/up uses lib/down.*\n +platform/lib/src/up/A.cpp includes lib/down/B.h" TREE ${two})

# Three rooms of a program. The fourth only looks in.
set(three host/a/A.h="b/B.h" host/b/B.h="c/C.h" host/c/C.h="../a/A.h" host/c/C.cpp="a/A.h" host/d/D.h="c/C.h")
expect("host/c uses host/a, .*\n +host/c/C.cpp includes a/A.h" TREE ${three})
expect("host/a uses host/b, .*host/b uses host/c, .*\n +host/c/C.h includes ../a/A.h" TREE ${three})
list(REMOVE_ITEM three "host/c/C.cpp=\"a/A.h\"" "host/c/C.h=\"../a/A.h\"")
expect("4 files, no circle" TREE ${three} host/c/C.h=<string>)

# Public headers beside the rooms are one room with the sources beside them.
expect("lib uses lib/in, .*lib/in uses lib, "
  TREE platform/lib/include/lib/Lib.h=<string> platform/lib/src/Lib.cpp="in/In.h" platform/lib/src/in/In.h=<lib/Lib.h>)
# The nearest header of a name is meant, and other libraries' headers are not ours.
expect("no circle" TREE tools/a/Same.h=<string> tools/a/A.h="Same.h" tools/b/Same.h=<string> tools/b/B.h="a/A.h"
  host/b/Same.h="tools/a/A.h")
# Tests and fixtures may look everywhere.
expect("2 files, no circle" TREE host/a/A.h="b/B.h" host/b/B.h=<string> host/b/BTest.cpp="a/A.h"
  host/b/BTest_posix.cpp="a/A.h" host/b/BFixture.h="a/A.h" host/testing/T.h="a/A.h" host/a/A2Test.cpp="testing/T.h")
expect("only 0 files" TREE host/a/ATest.cpp=<string>)
