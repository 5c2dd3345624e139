# Finds the libraries of others that the build needs, and names all that are missing at once.
set(zet_missing "")

if(POLICY CMP0167 AND NOT WIN32)
  # Boost says itself where it is. Our libraries for Windows are its headers alone, which CMake's own search finds.
  # A macro keeps the policies that it was written under, so that this comes first.
  cmake_policy(SET CMP0167 NEW)
endif()

# zet_need(DEBIAN-PACKAGE what find_package takes...): a macro, because the targets must be known to the whole project.
macro(zet_need debian)
  find_package(${ARGN} QUIET)
  # GoogleTest is no good without its mocks, which may be a package of their own.
  if(NOT ${ARGV1}_FOUND OR ("${ARGV1}" STREQUAL GTest AND NOT TARGET GTest::gmock))
    string(JOIN " " zet_wanted ${ARGN})
    list(APPEND zet_missing "${zet_wanted} (Debian 12: ${debian})")
  endif()
endmacro()

# zet_need_header(VARIABLE HEADER DEBIAN-PACKAGE): for a library that is headers alone.
macro(zet_need_header variable header debian)
  find_path(${variable} ${header})
  if(NOT ${variable})
    list(APPEND zet_missing "the header ${header} (Debian 12: ${debian})")
  endif()
endmacro()

zet_need("libc6-dev" Threads)
zet_need("libboost1.81-dev" Boost 1.81)
zet_need("libpugixml-dev" pugixml)
zet_need("qt6-base-dev" Qt6 6.4 COMPONENTS Gui Widgets)
zet_need_header(ZET_CLI11 CLI/CLI.hpp "libcli11-dev")
if(NOT WIN32)
  zet_need("qt6-base-dev" Qt6 6.4 COMPONENTS DBus)
  zet_need_header(ZET_XCB_HEADERS xcb/xcb.h "libxcb1-dev")
  find_library(ZET_XCB xcb)
  if(NOT ZET_XCB)
    list(APPEND zet_missing "the library xcb (Debian 12: libxcb1-dev)")
  endif()
endif()
if(ZET_BUILD_TESTS)
  zet_need("libgtest-dev libgmock-dev" GTest)
  zet_need("qt6-base-dev" Qt6 6.4 COMPONENTS Test)
endif()

if(zet_missing)
  list(JOIN zet_missing "\n  missing: " zet_missing)
  message(FATAL_ERROR "The project cannot be built yet:\n  missing: ${zet_missing}\n"
    "Install these by the names that they have on this system. Where one lies in a folder of its own, name it: "
    "-DCMAKE_PREFIX_PATH=FOLDER")
endif()
