# Cross-builds the project for 64-bit Windows with the libraries that tools/windows/dependencies has built. The programs
# run under Wine. The presets "windows" and "windows-package" use this file; `./dev windows` does all of it.
include("${CMAKE_CURRENT_LIST_DIR}/mingw-w64-x86-64-compilers.cmake")

if(NOT ZET_WINDOWS_PREFIX)
  if(DEFINED ENV{ZET_WINDOWS_CACHE})
    set(ZET_WINDOWS_PREFIX "$ENV{ZET_WINDOWS_CACHE}/prefix")
  else()
    set(ZET_WINDOWS_PREFIX "$ENV{HOME}/.cache/zet-windows/prefix")
  endif()
endif()
set(ZET_WINDOWS_PREFIX "${ZET_WINDOWS_PREFIX}" CACHE PATH "What tools/windows/dependencies has built")
# The small projects in which CMake tries a compiler feature get this setting, too.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZET_WINDOWS_PREFIX)
if(NOT EXISTS "${ZET_WINDOWS_PREFIX}")
  message(FATAL_ERROR "There is no ${ZET_WINDOWS_PREFIX}; run ./dev windows, or tools/windows/dependencies")
endif()
list(APPEND CMAKE_FIND_ROOT_PATH "${ZET_WINDOWS_PREFIX}")
list(APPEND CMAKE_PREFIX_PATH "${ZET_WINDOWS_PREFIX}")

# Qt's moc, rcc and uic run on the building machine.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)

get_filename_component(CMAKE_CROSSCOMPILING_EMULATOR
  "${CMAKE_CURRENT_LIST_DIR}/../../tools/windows/under-wine" ABSOLUTE)
