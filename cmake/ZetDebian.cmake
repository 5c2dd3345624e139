# Makes Debian packages of what is installed: one for users, with all that hosts need while they run, and one for those
# who build hosts. `./dev package` calls it.
find_program(ZET_DPKG_DEB dpkg-deb DOC "Makes Debian packages; in Debian's package dpkg")
if(WIN32 OR ZET_FAULT_POINTS OR NOT ZET_DPKG_DEB)
  return()
endif()
find_program(ZET_GZIP gzip REQUIRED)
set(ZET_PACKAGE_CONTACT "the zetaudiopluginhostui authors <zetaudiopluginhostui@users.noreply.github.com>" CACHE STRING
  "Who answers for the packages, with a mail address")

set(zet_user_package zetaudiopluginmanager)
set(zet_dev_package libzetaudiopluginhostui-dev)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(zet_debian "${PROJECT_BINARY_DIR}/debian")
add_custom_target(zet_debian_files ALL
  COMMAND ${CMAKE_COMMAND} "-DSOURCES=${PROJECT_SOURCE_DIR}" "-DOUTPUT=${zet_debian}"
          "-DVERSION=${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}" "-DCONTACT=${ZET_PACKAGE_CONTACT}"
          "-DGZIP=${ZET_GZIP}" -P "${CMAKE_CURRENT_LIST_DIR}/ZetDebianFiles.cmake"
  BYPRODUCTS "${zet_debian}/changelog.Debian.gz" "${zet_debian}/copyright"
  COMMENT "Writing the files that Debian wants in packages"
  VERBATIM)
foreach(part IN ITEMS user dev)
  install(FILES "${zet_debian}/changelog.Debian.gz" "${zet_debian}/copyright"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${zet_${part}_package}" COMPONENT debian_${part} EXCLUDE_FROM_ALL)
endforeach()
# People look for documents below the package's name. Ours lie below the project's, on every system.
install(CODE "file(CREATE_LINK ../zetaudiopluginhostui
    \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/doc/${zet_user_package}/documents\" SYMBOLIC)"
  COMPONENT debian_user EXCLUDE_FROM_ALL)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zetaudiopluginhostui)
set(CPACK_PACKAGE_VENDOR "the zetaudiopluginhostui authors")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_COMPONENTS_ALL runtime manager development debian_user debian_dev)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${ZET_PACKAGE_CONTACT}")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_ZET_SOURCES "${PROJECT_SOURCE_DIR}")
set(CPACK_POST_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/ZetDebianRepack.cmake")
# The debug packages hold what the programs are stripped of.
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE "${ZET_PACKAGE_DEBUG}")
if(NOT ZET_PACKAGE_DEBUG)
  set(CPACK_STRIP_FILES ON)
endif()

set(CPACK_DEBIAN_USER_PACKAGE_NAME ${zet_user_package})
set(CPACK_DEBIAN_USER_PACKAGE_SECTION sound)
set(CPACK_COMPONENT_USER_DESCRIPTION "manager of audio plug-ins
The Audio Plug-In Manager finds the VST2, VST3 and CLAP plug-ins of a machine,
shows which of them work, and chooses which ones programs use. Plug-ins are
loaded in processes of their own: one that crashes or hangs is banned, with
the reason, and the rest is found.

This package also has the module and the scanner that other programs load.")
set(CPACK_DEBIAN_USER_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_USER_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
# What the windows need is loaded while the program runs.
set(CPACK_DEBIAN_USER_PACKAGE_DEPENDS "qt6-qpa-plugins")
set(CPACK_DEBIAN_USER_PACKAGE_RECOMMENDS "qt6-translations-l10n, qt6-wayland")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME ${zet_dev_package})
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEV_DESCRIPTION "plug-in manager for host applications, development files
Headers and the CMake package with which a host application builds on the
Audio Plug-In Manager's module.")
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
  "${zet_user_package} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

include(CPack)
cpack_add_component_group(user)
cpack_add_component_group(dev)
cpack_add_component(runtime GROUP user)
cpack_add_component(manager GROUP user)
cpack_add_component(debian_user GROUP user)
cpack_add_component(development GROUP dev)
cpack_add_component(debian_dev GROUP dev)
