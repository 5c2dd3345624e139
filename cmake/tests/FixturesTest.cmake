cmake_minimum_required(VERSION 3.25)
# cmake -DWORK=a scratch folder -P FixturesTest.cmake
# Fixtures.cmake looks at small trees.

# expect(words file code): the answer for a project with this one file.
function(expect words file code)
  file(REMOVE_RECURSE "${WORK}")
  file(WRITE "${WORK}/${file}" "${code}\n")
  execute_process(COMMAND ${CMAKE_COMMAND} "-DROOT=${WORK}" -P "${CMAKE_CURRENT_LIST_DIR}/Fixtures.cmake"
    OUTPUT_VARIABLE answer ERROR_VARIABLE answer)
  # CMake breaks the lines of its errors.
  string(REGEX REPLACE "[ \n]+" " " answer "${answer}")
  if(NOT answer MATCHES "${words}")
    message(SEND_ERROR "expected \"${words}\" of ${file} with ${code}, and there was: ${answer}")
  endif()
endfunction()

expect("a fixture belongs into a folder testing/" platform/lib/src/ThingFixture.h "#include <string>")
expect("a fixture belongs into a folder testing/" host/ThingFixture_posix.cpp "#include <string>")
foreach(include IN ITEMS "<gtest/gtest.h>" "<gmock/gmock.h>" "<zettesting/EventLog.h>" "\"testing/Thing.h\"" "<QTest>")
  expect("product code has #include ${include}" scanner/worker/Thing.cpp "#include ${include}")
endforeach()
expect("1 files, no fixture" platform/lib/src/Thing.cpp "#include <string>")
file(REMOVE_RECURSE "${WORK}")
foreach(file IN ITEMS platform/lib/testing/ThingFixture.h platform/lib/src/ThingTest.cpp host/ThingTest_win.cpp)
  expect("no product code" ${file} "#include <gtest/gtest.h>")
endforeach()
file(REMOVE_RECURSE "${WORK}")
