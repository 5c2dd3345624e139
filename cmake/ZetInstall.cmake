# Installs the programs, the libraries, their public headers, the string tables, and the package with which hosts find
# all of it (docs/embedding.md). There are three components: `runtime` is what every host needs, `manager` is the program
# for users, with what desktops and shells want to know of it, and `development` is what building a host takes.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

if(ZET_FAULT_POINTS)
  install(CODE "message(STATUS \"These programs have fault points for tests. Users get what the preset 'package' builds.\")")
endif()

set(ZET_INSTALL_LIBRARIES "${CMAKE_INSTALL_LIBDIR}" CACHE STRING
  "Where the libraries go: a folder of their own in packages, because nobody else's programs may find them by chance")
set(zet_package "${CMAKE_INSTALL_LIBDIR}/cmake/zetaudiopluginhostui")
cmake_path(ABSOLUTE_PATH ZET_INSTALL_LIBRARIES BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" OUTPUT_VARIABLE zet_libraries)
file(RELATIVE_PATH zet_libraries_from_programs "${CMAKE_INSTALL_FULL_BINDIR}" "${zet_libraries}")

include("${CMAKE_CURRENT_LIST_DIR}/ZetPublicHeaders.cmake")

# What both ways of embedding need, and what each of them adds: zetaudiopluginscan needs no Qt.
set(zet_libraries_of_Base zetcore zettransport zetmarshal zetaudiofilterhost zetaudiopluginhost)
set(zet_libraries_of_Dialog zetui zetaudiopluginhostui)
set(zet_libraries_of_Scan zetaudiopluginscan)
set_target_properties(zetaudiopluginscan PROPERTIES EXPORT_NAME scan)
foreach(set IN ITEMS Base Dialog Scan)
  install(TARGETS ${zet_libraries_of_${set}} EXPORT zetaudiopluginhostui${set}Targets
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
    LIBRARY DESTINATION "${ZET_INSTALL_LIBRARIES}" COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION "${ZET_INSTALL_LIBRARIES}" COMPONENT development
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
  install(EXPORT zetaudiopluginhostui${set}Targets NAMESPACE zetaudiopluginhostui:: DESTINATION "${zet_package}"
    COMPONENT development)
endforeach()

foreach(header IN LISTS ZET_PUBLIC_HEADERS)
  cmake_path(GET header PARENT_PATH folder)
  string(REGEX REPLACE "/.*" "" library "${header}")
  get_target_property(sources ${library} SOURCE_DIR)
  set(file "${sources}/include/${header}")
  if(header MATCHES "/Export\\.h$")
    set(file "${PROJECT_BINARY_DIR}/generated/${library}/${header}")
  endif()
  install(FILES "${file}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}" COMPONENT development)
endforeach()

# The documents keep their places to each other, so that their links lead somewhere.
install(FILES LICENSE README.md ARCHITECTURE.md CHANGELOG.md CONTRIBUTING.md SECURITY.md
  DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT manager)
file(GLOB zet_documents CONFIGURE_DEPENDS docs/*.md)
set(zet_documents_of_hosts "${PROJECT_SOURCE_DIR}/docs/embedding.md" "${PROJECT_SOURCE_DIR}/docs/scan-protocol.md")
list(REMOVE_ITEM zet_documents ${zet_documents_of_hosts})
install(FILES ${zet_documents} DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs" COMPONENT manager)
install(DIRECTORY docs/images DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs" COMPONENT manager)
install(FILES ${zet_documents_of_hosts} DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs" COMPONENT development)
install(DIRECTORY docs/examples DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs" COMPONENT development
  FILES_MATCHING PATTERN "*.cpp" PATTERN "*.py" PATTERN CMakeLists.txt PATTERN __pycache__ EXCLUDE)

foreach(program zetaudiofilterscan zetaudiopluginmanager)
  # The same path serves the build tree, where the libraries lie beside the programs, and the installed programs. If
  # CMake replaced the path on installation, it would pad it with empty entries, which mean the current folder.
  set_target_properties(${program} PROPERTIES
    INSTALL_RPATH "$ORIGIN;$ORIGIN/${zet_libraries_from_programs}" BUILD_WITH_INSTALL_RPATH ON)
endforeach()
install(TARGETS zetaudiofilterscan RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
install(TARGETS zetaudiopluginmanager RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT manager)

install(DIRECTORY zetaudiopluginhostui/lang/ DESTINATION "${CMAKE_INSTALL_DATADIR}/zetaudiopluginhostui/lang"
  COMPONENT runtime FILES_MATCHING PATTERN "*.txt" PATTERN CMakeLists.txt EXCLUDE PATTERN testing EXCLUDE)

configure_package_config_file(cmake/zetaudiopluginhostuiConfig.cmake.in
  "${PROJECT_BINARY_DIR}/zetaudiopluginhostuiConfig.cmake"
  INSTALL_DESTINATION "${zet_package}" PATH_VARS CMAKE_INSTALL_BINDIR CMAKE_INSTALL_DATADIR)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/zetaudiopluginhostuiConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/zetaudiopluginhostuiConfig.cmake"
  "${PROJECT_BINARY_DIR}/zetaudiopluginhostuiConfigVersion.cmake"
  DESTINATION "${zet_package}" COMPONENT development)

include("${CMAKE_CURRENT_LIST_DIR}/ZetInstallManager.cmake")
