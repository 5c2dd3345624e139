add_test(NAME fault_points.tests_without_them_are_refused
  COMMAND ${CMAKE_COMMAND} -S "${PROJECT_SOURCE_DIR}" -B "${CMAKE_CURRENT_BINARY_DIR}/tests_without_fault_points"
          -G "${CMAKE_GENERATOR}" -DZET_FAULT_POINTS=OFF)
set_tests_properties(fault_points.tests_without_them_are_refused PROPERTIES
  PASS_REGULAR_EXPRESSION "The tests need fault points, which no package must have")

# Users install programs without fault points. A second build of all products would show that, but it takes too long for
# every run of the tests. Instead, the files that have fault points are compiled a second time without them. The package
# itself is checked where it is made.
if(NOT CMAKE_BUILD_TYPE STREQUAL "Release" OR ZET_SANITIZE)
  # Without optimization, an object holds the texts of calls that do nothing.
  return()
endif()

# zet_files_with_fault_points(LIBRARY result)
function(zet_files_with_fault_points library result)
  get_target_property(folder ${library}_objects SOURCE_DIR)
  get_target_property(sources ${library}_objects SOURCES)
  set(files "")
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY "${folder}")
    # Generated sources do not exist yet. The sources of the fault points themselves are left out without them.
    if(EXISTS "${source}" AND NOT source MATCHES "/debug/faults/[A-Za-z_]*\\.cpp$")
      file(STRINGS "${source}" found REGEX "zetcore/debug/faults/FaultPoint\\.h")
      if(found)
        list(APPEND files "${source}")
      endif()
    endif()
  endforeach()
  set(${result} "${files}" PARENT_SCOPE)
endfunction()

# zet_compile_without_fault_points(LIBRARY target sources...)
function(zet_compile_without_fault_points library target)
  set(configuration "${CMAKE_CURRENT_BINARY_DIR}/without_fault_points")
  set(ZET_FAULT_POINTS OFF)
  configure_file("${PROJECT_SOURCE_DIR}/platform/zetcore/src/debug/faults/FaultConfiguration.h.in"
    "${configuration}/zetcore/debug/faults/FaultConfiguration.h")
  add_library(${target} OBJECT ${ARGN})
  zet_compile_settings(${target})
  zet_join_files(${target} ALL)
  zet_layer_of(${library} layer)
  zet_layer(${target} ${layer})
  get_target_property(folders ${library}_objects INCLUDE_DIRECTORIES)
  get_target_property(definitions ${library}_objects COMPILE_DEFINITIONS)
  get_target_property(linked ${library}_objects LINK_LIBRARIES)
  # Before the folder of the header that has them switched on.
  target_include_directories(${target} BEFORE PRIVATE "${configuration}")
  target_include_directories(${target} PRIVATE ${folders})
  target_compile_definitions(${target} PRIVATE ${definitions})
  target_link_libraries(${target} PRIVATE ${linked})
endfunction()

# zet_fault_points_test(NAME EXPECT_ALL files...)
function(zet_fault_points_test name expect_all)
  add_test(NAME fault_points.${name}
    COMMAND ${CMAKE_COMMAND} "-DSOURCES=${PROJECT_SOURCE_DIR}" "-DFILES=${ARGN}" -DEXPECT_ALL=${expect_all}
            -P "${PROJECT_SOURCE_DIR}/cmake/ZetNoFaultPoints.cmake")
endfunction()

set(with "")
set(without "")
get_property(libraries GLOBAL PROPERTY ZET_LIBRARIES)
foreach(library IN LISTS libraries)
  zet_files_with_fault_points(${library} files)
  if(files)
    zet_compile_without_fault_points(${library} ${library}_without_fault_points ${files})
    list(APPEND without $<TARGET_OBJECTS:${library}_without_fault_points>)
    list(APPEND with $<TARGET_OBJECTS:${library}_objects>)
  endif()
endforeach()
if(WIN32)
  set(system win)
else()
  set(system posix)
endif()
zet_fault_points_test(names_are_in_a_build_with_them ${system} ${with})
zet_fault_points_test(names_are_in_no_build_without_them OFF ${without})
zet_fault_points_test(a_package_with_a_name_is_refused OFF ${with})
set_tests_properties(fault_points.a_package_with_a_name_is_refused PROPERTIES
  PASS_REGULAR_EXPRESSION "holds the name of a fault +point: ZET_FAULT")
