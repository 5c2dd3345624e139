# cmake -DPROJECT=the project -DWORK=a scratch folder -DGENERATOR=... -DCOMPILER=... -P Missing.cmake
# Configures the project where libraries are hidden. One run must name all of them, and no other.

# configure(RESULT OUTPUT options...)
function(configure result output)
  file(REMOVE_RECURSE "${WORK}")
  execute_process(COMMAND ${CMAKE_COMMAND} -S "${PROJECT}" -B "${WORK}" -G "${GENERATOR}"
    "-DCMAKE_CXX_COMPILER=${COMPILER}" ${ARGN} RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE said)
  set(${result} "${status}" PARENT_SCOPE)
  set(${output} "${said}" PARENT_SCOPE)
endfunction()

# expect_missing(SAID parts...)
function(expect_missing said)
  string(REGEX MATCHALL "missing: [^\n]*" found "${said}")
  foreach(part IN LISTS ARGN)
    string(FIND "${found}" "missing: ${part}" position)
    if(position EQUAL -1)
      message(FATAL_ERROR "'${part}' is hidden and was not named:\n${said}")
    endif()
  endforeach()
  list(LENGTH ARGN wanted)
  list(LENGTH found count)
  if(NOT count EQUAL wanted)
    message(FATAL_ERROR "${wanted} parts are hidden, and ${count} were named:\n${said}")
  endif()
endfunction()

# CMake takes the headers from /usr/include, and the packages from elsewhere.
configure(result said -DCMAKE_DISABLE_FIND_PACKAGE_pugixml=ON -DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON
  -DCMAKE_IGNORE_PATH=/usr/include)
if(result EQUAL 0)
  message(FATAL_ERROR "the project is configured without its libraries")
endif()
expect_missing("${said}" "pugixml (Debian 12: libpugixml-dev)" "Qt6 6.4 COMPONENTS Gui Widgets (Debian 12: qt6-base-dev)"
  "Qt6 6.4 COMPONENTS DBus" "Qt6 6.4 COMPONENTS Test" "the header CLI/CLI.hpp (Debian 12: libcli11-dev)"
  "the header xcb/xcb.h (Debian 12: libxcb1-dev)")

# What only the tests need is asked for only with them.
configure(result said -DZET_BUILD_TESTS=OFF -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON
  -DCMAKE_DISABLE_FIND_PACKAGE_Boost=ON)
expect_missing("${said}" "Boost 1.81 (Debian 12: libboost1.81-dev)")
file(REMOVE_RECURSE "${WORK}")
