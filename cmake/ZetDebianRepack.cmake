# CPack runs this when it has made the Debian packages. It packs each of them again, as Debian does: with the files in the
# order of their names, and none of them younger than the commit. So one commit gives the same packages, byte for byte.
# It also puts right what CPack does not do as Debian wants it:
# - The list of sums in a debug package names files in the folder of the build.
# - A debug package has no licence.
# - Folders and debug symbols have the rights of the packager's umask.
# - The scripts call ldconfig, although nobody else's programs must find our libraries.
find_program(dpkg_deb dpkg-deb REQUIRED)
include("${CMAKE_CURRENT_LIST_DIR}/ZetCommitTime.cmake")
zet_commit_time(seconds "${CPACK_ZET_SOURCES}")
set(time "")
if(seconds)
  set(time "SOURCE_DATE_EPOCH=${seconds}")
else()
  message(STATUS "The packages have the times of this build, because there is neither a commit nor SOURCE_DATE_EPOCH")
endif()

function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(folder "${package}.unpacked")
  file(REMOVE_RECURSE "${folder}")
  run("${dpkg_deb}" --raw-extract "${package}" "${folder}")

  if(package MATCHES "/([^/_]+)-dbgsym_[^/]*$")
    # This package has the licence of the programs, which it needs anyway.
    file(MAKE_DIRECTORY "${folder}/usr/share/doc")
    file(CREATE_LINK "${CMAKE_MATCH_1}" "${folder}/usr/share/doc/${CMAKE_MATCH_1}-dbgsym" SYMBOLIC)
  endif()
  foreach(script IN ITEMS postinst postrm)
    if(EXISTS "${folder}/DEBIAN/${script}")
      file(STRINGS "${folder}/DEBIAN/${script}" lines)
      list(FILTER lines EXCLUDE REGEX "^(#.*|set -e|if .*|fi|[ \t]*ldconfig|)$")
      if(lines)
        message(FATAL_ERROR "${script} of ${package} does more than to call ldconfig: ${lines}")
      endif()
      file(REMOVE "${folder}/DEBIAN/${script}")
    endif()
  endforeach()
  run(sh -c "cd \"$1\" && find usr -type f -print0 | LC_ALL=C sort -z | xargs -0 -r md5sum >DEBIAN/md5sums"
    sh "${folder}")
  # Whoever has a stricter umask makes no folders that users cannot enter.
  run(find "${folder}" -type d -exec chmod 755 {} +)
  run(find "${folder}" -name "*.debug" -exec chmod 644 {} +)
  run(chmod 644 "${folder}/DEBIAN/control" "${folder}/DEBIAN/md5sums")

  run(${CMAKE_COMMAND} -E env ${time} "${dpkg_deb}" --root-owner-group --build "${folder}" "${package}")
  file(REMOVE_RECURSE "${folder}")
endforeach()
