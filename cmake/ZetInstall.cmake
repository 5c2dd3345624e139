# Installs the programs, the libraries, their public headers, the string tables, and the package with which hosts find
# all of it (docs/embedding.md).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

if(ZET_FAULT_POINTS)
  install(CODE "message(STATUS \"These programs have fault points for tests. Users get what the preset 'package' builds.\")")
endif()

set(zet_package "${CMAKE_INSTALL_LIBDIR}/cmake/zetaudiopluginhostui")
file(RELATIVE_PATH zet_libraries_from_programs
  "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")

foreach(library zetcore zettransport zetmarshal zetaudiofilterhost zetaudiopluginhost zetui zetaudiopluginhostui)
  install(TARGETS ${library} EXPORT zetaudiopluginhostuiTargets
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
  get_target_property(sources ${library} SOURCE_DIR)
  install(DIRECTORY "${sources}/include/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" FILES_MATCHING PATTERN "*.h")
  install(DIRECTORY "${PROJECT_BINARY_DIR}/generated/${library}/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    FILES_MATCHING PATTERN "*.h")
endforeach()

foreach(program zetaudiofilterscan zetaudiopluginmanager)
  # The same path serves the build tree, where the libraries lie beside the programs, and the installed programs. If
  # CMake replaced the path on installation, it would pad it with empty entries, which mean the current folder.
  set_target_properties(${program} PROPERTIES
    INSTALL_RPATH "$ORIGIN;$ORIGIN/${zet_libraries_from_programs}" BUILD_WITH_INSTALL_RPATH ON)
  install(TARGETS ${program} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endforeach()

install(DIRECTORY zetaudiopluginhostui/lang/ DESTINATION "${CMAKE_INSTALL_DATADIR}/zetaudiopluginhostui/lang"
  FILES_MATCHING PATTERN "*.txt" PATTERN CMakeLists.txt EXCLUDE PATTERN testing EXCLUDE)

install(EXPORT zetaudiopluginhostuiTargets NAMESPACE zetaudiopluginhostui:: DESTINATION "${zet_package}")
configure_package_config_file(cmake/zetaudiopluginhostuiConfig.cmake.in
  "${PROJECT_BINARY_DIR}/zetaudiopluginhostuiConfig.cmake"
  INSTALL_DESTINATION "${zet_package}" PATH_VARS CMAKE_INSTALL_BINDIR CMAKE_INSTALL_DATADIR)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/zetaudiopluginhostuiConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/zetaudiopluginhostuiConfig.cmake"
  "${PROJECT_BINARY_DIR}/zetaudiopluginhostuiConfigVersion.cmake"
  DESTINATION "${zet_package}")
