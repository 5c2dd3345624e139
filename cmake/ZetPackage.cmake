# Collects what the programs need on a Windows machine that has nothing of ours: beside the programs of the build, and
# in the zip that the target zet_package makes.
include_guard()

set(ZET_PACKAGE_NAME "zetaudiopluginmanager-${PROJECT_VERSION}-windows-x86_64")
set(ZET_PACKAGE_FOLDER "${PROJECT_BINARY_DIR}/package/${ZET_PACKAGE_NAME}")

# These are the libraries that we did not build: Qt's and the compiler's own.
set(zet_runtime "")
set(zet_compiler_libraries "")
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
    list(APPEND zet_compiler_libraries "${library}.dll")
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
set(zet_platform_plugins
  "${zet_platforms}/qwindows${CMAKE_SHARED_LIBRARY_SUFFIX}" "${zet_platforms}/qoffscreen${CMAKE_SHARED_LIBRARY_SUFFIX}")
set(zet_copies COMMAND ${CMAKE_COMMAND} -E make_directory "${zet_bin}/platforms"
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${zet_runtime} ${zet_test_runtime} "${zet_bin}"
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${zet_platform_plugins} "${zet_bin}/platforms")
if(ZET_BUILD_TESTS AND MINGW)
  # The tests start thousands of programs, so their copies begin quickly, too. The package gets the files as they are.
  foreach(file IN LISTS zet_runtime zet_test_runtime)
    list(APPEND zet_copies COMMAND ${CMAKE_OBJCOPY} ${ZET_PAGE_ALIGNMENT} "${file}" "${zet_bin}/$<PATH:GET_FILENAME,${file}>")
  endforeach()
endif()
set(zet_stamp "${PROJECT_BINARY_DIR}/windows_runtime.stamp")
add_custom_command(OUTPUT "${zet_stamp}" ${zet_copies} COMMAND ${CMAKE_COMMAND} -E touch "${zet_stamp}"
  DEPENDS ${zet_runtime} ${zet_test_runtime} ${zet_platform_plugins} VERBATIM)
add_custom_target(zet_windows_runtime ALL DEPENDS "${zet_stamp}")

# The package is a component of its own, which is installed only when it is named. A plain installation is that of
# cmake/ZetInstall.cmake.
install(TARGETS zetcore zettransport zetmarshal zetaudiofilterhost zetaudiopluginhost zetui zetaudiopluginhostui
                zetaudiopluginscan zetaudiofilterscan zetaudiopluginmanager
  RUNTIME DESTINATION . COMPONENT package EXCLUDE_FROM_ALL)
install(FILES ${zet_runtime} DESTINATION . COMPONENT package EXCLUDE_FROM_ALL)
if(MINGW)
  # CMake strips our own programs only. Symbols are most of what the compiler's libraries hold.
  install(CODE "if(CMAKE_INSTALL_DO_STRIP)
    execute_process(COMMAND \"${CMAKE_STRIP}\" ${zet_compiler_libraries}
      WORKING_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\" COMMAND_ERROR_IS_FATAL ANY)
  endif()" COMPONENT package EXCLUDE_FROM_ALL)
endif()
install(FILES "${zet_platforms}/qwindows${CMAKE_SHARED_LIBRARY_SUFFIX}"
  DESTINATION platforms COMPONENT package EXCLUDE_FROM_ALL)
install(DIRECTORY "${zet_bin}/lang" DESTINATION . COMPONENT package EXCLUDE_FROM_ALL 
  FILES_MATCHING PATTERN "*.txt" PATTERN "*.qm")
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
zet_install_licence(qt-translations ${zet_doc}/qt6-translations-l10n/copyright)
zet_install_licence(pugixml "${ZET_WINDOWS_PREFIX}/licences/pugixml/copyright")
zet_install_licence(boost ${zet_doc}/libboost1.81-dev/copyright)
zet_install_licence(CLI11 ${zet_doc}/libcli11-dev/copyright)
zet_install_licence(LGPL-3 /usr/share/common-licenses/LGPL-3)
zet_install_licence(GPL-3 /usr/share/common-licenses/GPL-3)
if(MINGW)
  zet_install_licence(gcc ${zet_doc}/gcc-mingw-w64-base/copyright)
  zet_install_licence(mingw-w64 ${zet_doc}/mingw-w64-common/copyright)
endif()

# The list of what is in the package. A file without a part is an error, as is a part without a version.
# The version of the source package, where tools/windows/dependencies has built the library, is the most exact.
function(zet_read_version variable name otherwise)
  set(version "${otherwise}")
  if(EXISTS "${ZET_WINDOWS_PREFIX}/.stamps/${name}")
    file(READ "${ZET_WINDOWS_PREFIX}/.stamps/${name}" version)
    string(STRIP "${version}" version)
  endif()
  set(${variable} "${version}" PARENT_SCOPE)
endfunction()
zet_read_version(zet_qt_version qt "${Qt6_VERSION}")
zet_read_version(zet_pugixml_version pugixml "${pugixml_VERSION}")
file(STRINGS "${ZET_CLI11}/CLI/Version.hpp" zet_cli11_version REGEX "^#define CLI11_VERSION ")
string(REGEX REPLACE ".*\"(.*)\".*" "\\1" zet_cli11_version "${zet_cli11_version}")
set(zet_parts
  "zetaudiopluginmanager|${PROJECT_VERSION}|MIT|NOASSERTION|zet*.dll zet*.exe lang/*.txt LICENSE.txt README.txt"
  "qtbase|${zet_qt_version}|LGPL-3.0-only|https://download.qt.io|Qt6*.dll platforms/*.dll licences/qt.txt licences/LGPL-3.txt licences/GPL-3.txt"
  "qttranslations|${Qt6_VERSION}|GPL-3.0-only WITH Qt-GPL-exception-1.0|https://download.qt.io|lang/*.qm licences/qt-translations.txt"
  "pugixml|${zet_pugixml_version}|MIT|https://github.com/zeux/pugixml|licences/pugixml.txt"
  "boost|${Boost_VERSION}|BSL-1.0|https://www.boost.org|licences/boost.txt"
  "CLI11|${zet_cli11_version}|BSD-3-Clause|https://github.com/CLIUtils/CLI11|licences/CLI11.txt")
if(MINGW)
  # Debian's cross compiler does not tell its whole version.
  set(zet_gcc_version "")
  if(CMAKE_CROSSCOMPILING)
    execute_process(COMMAND dpkg-query -W -f "\${Version}" gcc-mingw-w64-base
      OUTPUT_VARIABLE zet_gcc_version ERROR_QUIET)
  endif()
  if(NOT zet_gcc_version)
    set(zet_gcc_version "${CMAKE_CXX_COMPILER_VERSION}")
  endif()
  file(TOUCH "${PROJECT_BINARY_DIR}/empty.cpp")
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -E -dM -include _mingw.h "${PROJECT_BINARY_DIR}/empty.cpp"
    OUTPUT_VARIABLE macros COMMAND_ERROR_IS_FATAL ANY)
  set(zet_mingw_version "")
  foreach(part IN ITEMS MAJOR MINOR BUGFIX)
    if(NOT macros MATCHES "__MINGW64_VERSION_${part} ([0-9]+)")
      message(FATAL_ERROR "The compiler's headers do not tell the version of MinGW-w64")
    endif()
    list(APPEND zet_mingw_version ${CMAKE_MATCH_1})
  endforeach()
  list(JOIN zet_mingw_version "." zet_mingw_version)
  list(APPEND zet_parts
    "gcc-libraries|${zet_gcc_version}|GPL-3.0-or-later WITH GCC-exception-3.1|https://gcc.gnu.org|libgcc_s_*.dll libstdc++*.dll licences/gcc.txt"
    "mingw-w64|${zet_mingw_version}|MIT|https://www.mingw-w64.org|libwinpthread*.dll licences/mingw-w64.txt")
endif()
set(zet_contents "--name\nzetaudiopluginmanager\n--version\n${PROJECT_VERSION}\n")
foreach(part IN LISTS zet_parts)
  string(APPEND zet_contents "--part\n${part}\n")
endforeach()
file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/contents.txt" CONTENT "${zet_contents}" @ONLY)

add_custom_target(zet_package
  COMMAND ${CMAKE_COMMAND} "-DFOLDER=${ZET_PACKAGE_FOLDER}" "-DBUILD=${PROJECT_BINARY_DIR}"
          -P "${PROJECT_SOURCE_DIR}/cmake/ZetInstallPackage.cmake"
  COMMAND ${CMAKE_COMMAND} "-DSOURCES=${PROJECT_SOURCE_DIR}" "-DFOLDERS=${ZET_PACKAGE_FOLDER}"
          -P "${PROJECT_SOURCE_DIR}/cmake/ZetNoFaultPoints.cmake"
  COMMAND ${CMAKE_COMMAND} -E chdir "${PROJECT_BINARY_DIR}/package"
          ${CMAKE_COMMAND} -E tar cf "${ZET_PACKAGE_NAME}.zip" --format=zip "${ZET_PACKAGE_NAME}"
  VERBATIM)
add_dependencies(zet_package zetaudiopluginmanager zetaudiopluginscan zetaudiofilterscan zet_string_tables)
