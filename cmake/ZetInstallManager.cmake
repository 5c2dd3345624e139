# Installs what desktops and shells want to know of the manager: its icon, desktop file, description for software centres,
# manual pages and completions. On Windows the programs carry what is needed there.
if(WIN32)
  return()
endif()

install(FILES "${ZET_DESKTOP_FOLDER}/${ZET_DESKTOP_ID}.desktop"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/applications" COMPONENT manager)

set(zet_metainfo "${PROJECT_BINARY_DIR}/generated/desktop/${ZET_DESKTOP_ID}.metainfo.xml")
configure_file("${ZET_DESKTOP_FOLDER}/${ZET_DESKTOP_ID}.metainfo.xml.in" "${zet_metainfo}" @ONLY)
install(FILES "${zet_metainfo}" DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo" COMPONENT manager)

install(FILES "${zet_icon_drawing}"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps" COMPONENT manager)
if(ZET_ICON_FILES)
  install(DIRECTORY "${zet_icons}/hicolor" DESTINATION "${CMAKE_INSTALL_DATADIR}/icons" COMPONENT manager)
endif()

if(TARGET zet_reference)
  set(zet_manual "${CMAKE_INSTALL_MANDIR}/man1")
  install(FILES "${ZET_REFERENCE_FOLDER}/zetaudiofilterscan.1.gz" DESTINATION "${zet_manual}" COMPONENT runtime)
  install(FILES "${ZET_REFERENCE_FOLDER}/zetaudiopluginmanager.1.gz" DESTINATION "${zet_manual}" COMPONENT manager)
  # Each shell looks for files of these names.
  install(FILES "${ZET_REFERENCE_FOLDER}/zetaudiopluginmanager"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT manager)
  install(FILES "${ZET_REFERENCE_FOLDER}/_zetaudiopluginmanager"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions" COMPONENT manager)
  install(FILES "${ZET_REFERENCE_FOLDER}/zetaudiopluginmanager.fish"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d" COMPONENT manager)
endif()
