# Makes the program's icon in the sizes that desktops and Windows want, from the one drawing. Without the tool that does
# it, the programs are built all the same: Linux packages then have the drawing alone, and Windows programs no icon.
include_guard()

set(ZET_DESKTOP_ID io.github.zetaudiopluginhostui.Manager)
set(ZET_DESKTOP_FOLDER "${PROJECT_SOURCE_DIR}/host/desktop")
set(zet_icon_drawing "${ZET_DESKTOP_FOLDER}/icon/${ZET_DESKTOP_ID}.svg")
set(zet_icons "${PROJECT_BINARY_DIR}/generated/icons")
set(ZET_ICON_FILES "")
set(ZET_WINDOWS_ICON "")

find_program(ZET_RSVG_CONVERT rsvg-convert NO_CMAKE_FIND_ROOT_PATH DOC "Draws the icon; in Debian's package librsvg2-bin")
find_program(ZET_PYTHON NAMES python3 python NO_CMAKE_FIND_ROOT_PATH DOC "Puts the icon for Windows together")

if(NOT ZET_RSVG_CONVERT)
  message(STATUS "The icon is made in no sizes, because there is no rsvg-convert (Debian: librsvg2-bin)")
  return()
endif()

set(zet_small_icons "")
foreach(size IN ITEMS 16 22 24 32 48 64 128 256 512)
  set(folder "${zet_icons}/hicolor/${size}x${size}/apps")
  set(icon "${folder}/${ZET_DESKTOP_ID}.png")
  add_custom_command(OUTPUT "${icon}"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${folder}"
    COMMAND "${ZET_RSVG_CONVERT}" -w ${size} -h ${size} "${zet_icon_drawing}" -o "${icon}"
    DEPENDS "${zet_icon_drawing}"
    COMMENT "Drawing the icon, ${size} pixels"
    VERBATIM)
  list(APPEND ZET_ICON_FILES "${icon}")
  if(size LESS 512)
    list(APPEND zet_small_icons "${icon}")
  endif()
endforeach()
add_custom_target(zet_icons ALL DEPENDS ${ZET_ICON_FILES})

if(NOT ZET_PYTHON)
  message(STATUS "Programs for Windows get no icon, because there is no Python to put it together")
  return()
endif()
set(ZET_WINDOWS_ICON "${zet_icons}/${ZET_DESKTOP_ID}.ico")
add_custom_command(OUTPUT "${ZET_WINDOWS_ICON}"
  COMMAND "${ZET_PYTHON}" -B "${ZET_DESKTOP_FOLDER}/make_ico.py" "${ZET_WINDOWS_ICON}" ${zet_small_icons}
  DEPENDS ${zet_small_icons} "${ZET_DESKTOP_FOLDER}/make_ico.py"
  COMMENT "Putting the icon for Windows together"
  VERBATIM)
add_custom_target(zet_windows_icon DEPENDS "${ZET_WINDOWS_ICON}")
add_dependencies(zet_windows_icon zet_icons)
