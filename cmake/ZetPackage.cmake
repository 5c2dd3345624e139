# Collects what the programs need on a Windows machine that has nothing of ours: beside the programs of the build, and
# in the zip that the target zet_package makes.
include_guard()

set(ZET_PACKAGE_NAME "zetaudiopluginmanager-${PROJECT_VERSION}-windows-x86_64")
set(ZET_PACKAGE_FOLDER "${PROJECT_BINARY_DIR}/package/${ZET_PACKAGE_NAME}")

# These are the libraries that we did not build: Qt's and the compiler's own.
set(zet_runtime "")
foreach(component IN ITEMS Core Gui Widgets)
  list(APPEND zet_runtime "$<TARGET_FILE:Qt6::${component}>")
endforeach()
if(MINGW)
  # Our libraries throw exceptions and pass strings to each other. They must share one standard library for that.
  foreach(library IN ITEMS libgcc_s_seh-1 libstdc++-6 libwinpthread-1)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}.dll
      OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    if(NOT EXISTS "${file}")
      message(FATAL_ERROR "The compiler has no ${library}.dll, which programs need where they run")
    endif()
    file(REAL_PATH "${file}" file)
    list(APPEND zet_runtime "${file}")
  endforeach()
endif()
set(zet_platforms "$<TARGET_FILE_DIR:Qt6::Core>/../plugins/platforms")
if(QT6_INSTALL_PREFIX AND QT6_INSTALL_PLUGINS)
  set(zet_platforms "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_PLUGINS}/platforms")
endif()

# Windows looks for libraries beside the programs. The tests also need Qt's test library and its windows in memory.
set(zet_bin "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
set(zet_test_runtime "")
if(ZET_BUILD_TESTS)
  set(zet_test_runtime "$<TARGET_FILE:Qt6::Test>")
endif()
add_custom_target(zet_windows_runtime ALL
  COMMAND ${CMAKE_COMMAND} -E make_directory "${zet_bin}/platforms"
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${zet_runtime} ${zet_test_runtime} "${zet_bin}"
  COMMAND ${CMAKE_COMMAND} -E copy_if_different
          "${zet_platforms}/qwindows${CMAKE_SHARED_LIBRARY_SUFFIX}"
          "${zet_platforms}/qoffscreen${CMAKE_SHARED_LIBRARY_SUFFIX}" "${zet_bin}/platforms"
  VERBATIM)

# The package is a component of its own, which is installed only when it is named. A plain installation is that of
# cmake/ZetInstall.cmake.
install(TARGETS zetcore zettransport zetmarshal zetaudiofilterhost zetaudiopluginhost zetui zetaudiopluginhostui
                zetaudiofilterscan zetaudiopluginmanager
  RUNTIME DESTINATION . COMPONENT package EXCLUDE_FROM_ALL)
install(FILES ${zet_runtime} DESTINATION . COMPONENT package EXCLUDE_FROM_ALL)
install(FILES "${zet_platforms}/qwindows${CMAKE_SHARED_LIBRARY_SUFFIX}"
  DESTINATION platforms COMPONENT package EXCLUDE_FROM_ALL)
install(DIRECTORY "${zet_bin}/lang" DESTINATION . COMPONENT package EXCLUDE_FROM_ALL FILES_MATCHING PATTERN "*.txt")
install(FILES LICENSE DESTINATION . RENAME LICENSE.txt COMPONENT package EXCLUDE_FROM_ALL)
install(FILES tools/windows/package/README.txt DESTINATION . COMPONENT package EXCLUDE_FROM_ALL)

# zet_install_licence(NAME candidates...): puts the first of these files that exists into the package.
function(zet_install_licence name)
  foreach(file IN LISTS ARGN)
    if(EXISTS "${file}")
      install(FILES "${file}" DESTINATION licences RENAME "${name}.txt" COMPONENT package EXCLUDE_FROM_ALL)
      return()
    endif()
  endforeach()
  message(WARNING "The package will lack the licence of ${name}: there is none of ${ARGN}")
endfunction()
set(zet_doc /usr/share/doc)
zet_install_licence(qt "${ZET_WINDOWS_PREFIX}/licences/qt/copyright")
zet_install_licence(pugixml "${ZET_WINDOWS_PREFIX}/licences/pugixml/copyright")
zet_install_licence(boost ${zet_doc}/libboost1.81-dev/copyright)
zet_install_licence(CLI11 ${zet_doc}/libcli11-dev/copyright)
zet_install_licence(LGPL-3 /usr/share/common-licenses/LGPL-3)
zet_install_licence(GPL-3 /usr/share/common-licenses/GPL-3)
if(MINGW)
  zet_install_licence(gcc ${zet_doc}/gcc-mingw-w64-base/copyright)
  zet_install_licence(mingw-w64 ${zet_doc}/mingw-w64-common/copyright)
endif()

add_custom_target(zet_package
  COMMAND ${CMAKE_COMMAND} "-DFOLDER=${ZET_PACKAGE_FOLDER}" "-DBUILD=${PROJECT_BINARY_DIR}"
          -P "${PROJECT_SOURCE_DIR}/cmake/ZetInstallPackage.cmake"
  COMMAND ${CMAKE_COMMAND} "-DSOURCES=${PROJECT_SOURCE_DIR}" "-DFOLDERS=${ZET_PACKAGE_FOLDER}"
          -P "${PROJECT_SOURCE_DIR}/cmake/ZetNoFaultPoints.cmake"
  COMMAND ${CMAKE_COMMAND} -E chdir "${PROJECT_BINARY_DIR}/package"
          ${CMAKE_COMMAND} -E tar cf "${ZET_PACKAGE_NAME}.zip" --format=zip "${ZET_PACKAGE_NAME}"
  VERBATIM)
add_dependencies(zet_package zetaudiopluginmanager zetaudiofilterscan zet_string_tables)
