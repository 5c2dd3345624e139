# Tells programs their version, which project() in CMakeLists.txt has, and of which commit they are.
include_guard()

set(zet_commit_header "${PROJECT_BINARY_DIR}/generated/version/ZetCommit.h")
# Each build asks Git. The header changes only with the answer.
add_custom_target(zet_commit
  COMMAND ${CMAKE_COMMAND} "-DSOURCES=${PROJECT_SOURCE_DIR}" "-DOUTPUT=${zet_commit_header}"
          -P "${CMAKE_CURRENT_LIST_DIR}/ZetCommit.cmake"
  BYPRODUCTS "${zet_commit_header}"
  COMMENT "Asking Git for the commit"
  VERBATIM)

# zet_knows_version(TARGET SOURCE): SOURCE, a file of the target, may include <ZetCommit.h> and use ZET_VERSION.
function(zet_knows_version target source)
  add_dependencies(${target} zet_commit)
  set_property(SOURCE "${source}" APPEND PROPERTY INCLUDE_DIRECTORIES "${PROJECT_BINARY_DIR}/generated/version")
  set_property(SOURCE "${source}" APPEND PROPERTY COMPILE_DEFINITIONS "ZET_VERSION=\"${PROJECT_VERSION}\"")
endfunction()

# zet_windows_properties(PROGRAM DESCRIPTION): gives a program its icon and its properties on Windows.
function(zet_windows_properties target description)
  if(NOT WIN32)
    return()
  endif()
  file(STRINGS "${PROJECT_SOURCE_DIR}/LICENSE" copyright REGEX "^Copyright" LIMIT_COUNT 1)
  set(script "${PROJECT_BINARY_DIR}/generated/version/${target}.rc")
  set(icon_line "")
  if(ZET_WINDOWS_ICON)
    # Qt takes the icon of this name for windows, too.
    set(icon_line "IDI_ICON1 ICON \"${ZET_WINDOWS_ICON}\"")
    set_property(SOURCE "${script}" PROPERTY OBJECT_DEPENDS "${ZET_WINDOWS_ICON}")
    add_dependencies(${target} zet_windows_icon)
  endif()
  configure_file("${PROJECT_SOURCE_DIR}/cmake/Version.rc.in" "${script}" @ONLY)
  target_sources(${target} PRIVATE "${script}")
endfunction()
