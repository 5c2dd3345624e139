cmake_minimum_required(VERSION 3.25)
# cmake -DWORK=a scratch folder -P PublicHeadersTest.cmake
# PublicHeaders.cmake refuses every header of others and every name of theirs, and nothing else.

# check(RESULT code): whether a public header with this code is accepted.
function(check result code)
  file(WRITE "${WORK}/Sample.h" "#pragma once\n\n${code}\n")
  execute_process(
    COMMAND ${CMAKE_COMMAND} "-DFOLDERS=${WORK}" -DLEAST=1 -P "${CMAKE_CURRENT_LIST_DIR}/PublicHeaders.cmake"
    RESULT_VARIABLE status ERROR_VARIABLE error)
  # CMake breaks the lines of its errors.
  string(REGEX REPLACE "[ \n]+" " " error "${error}")
  if(status EQUAL 0)
    set(${result} accepted PARENT_SCOPE)
  elseif(error MATCHES "Sample.h: a public header must not have:")
    set(${result} refused PARENT_SCOPE)
  else()
    message(FATAL_ERROR "${code}: ended with ${status}: ${error}")
  endif()
endfunction()

file(REMOVE_RECURSE "${WORK}")
foreach(code IN ITEMS
    "#include <boost/signals2/signal.hpp>"
    "#  include \"boost/config.hpp\""
    "#include <QWidget>"
    "#include <QtCore/qobject.h>"
    "#include <pugixml.hpp>"
    "#include <asio.hpp>"
    "#include <CLI/CLI.hpp>"
    "#include <xcb/xcb.h>"
    "using Signal = boost::signals2::signal<void()>"
    "class BOOST_SYMBOL_VISIBLE Exported"
    "namespace pugi::impl"
    "namespace asio::ip"
    "class QWidget"
    "QPainter* painter"
    "void Show(Qt::WindowFlags flags)"
    "Q_OBJECT")
  check(result "${code}")
  if(NOT result STREQUAL "refused")
    message(SEND_ERROR "accepted: ${code}")
  endif()
endforeach()
foreach(code IN ITEMS
    "#include <vector>"
    "#include <zetcore/signals/Signal.h>"
    "/// The painter of the toolkit, a `QPainter*` and no boost::thing."
    "class UI_QuickList"
    "bool EnableVST2Quirks()")
  check(result "${code}")
  if(NOT result STREQUAL "accepted")
    message(SEND_ERROR "refused: ${code}")
  endif()
endforeach()
file(REMOVE_RECURSE "${WORK}")
