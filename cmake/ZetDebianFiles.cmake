cmake_minimum_required(VERSION 3.25)
# cmake -DSOURCES=the project -DOUTPUT=a folder -DVERSION=the package's "-DCONTACT=who answers for it" -DGZIP=gzip
#       -P ZetDebianFiles.cmake
# Writes the files that Debian wants in every package: who may do what with it, and what has changed.
file(MAKE_DIRECTORY "${OUTPUT}")

# The day of the packages is that of the commit, so that one commit gives the same packages every day.
include("${CMAKE_CURRENT_LIST_DIR}/ZetCommitTime.cmake")
zet_commit_time(seconds "${SOURCES}")
if(seconds)
  set(ENV{SOURCE_DATE_EPOCH} "${seconds}")
endif()
string(TIMESTAMP day "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(changelog "${OUTPUT}/changelog.Debian")
file(WRITE "${changelog}" "zetaudiopluginhostui (${VERSION}) unstable; urgency=medium

  * See CHANGELOG.md for what is new.

 -- ${CONTACT}  ${day}
")
execute_process(COMMAND "${GZIP}" -9 -n -f "${changelog}" COMMAND_ERROR_IS_FATAL ANY)

# The licence itself is that of the file LICENSE, paragraph by paragraph.
file(STRINGS "${SOURCES}/LICENSE" lines)
set(holder "")
set(terms "")
foreach(line IN LISTS lines)
  if(line MATCHES "^Copyright \\(c\\) (.*)$")
    set(holder "${CMAKE_MATCH_1}")
  elseif(line STREQUAL "")
    string(APPEND terms " .\n")
  elseif(NOT line MATCHES "^MIT License")
    string(APPEND terms " ${line}\n")
  endif()
endforeach()
if(holder STREQUAL "")
  message(FATAL_ERROR "${SOURCES}/LICENSE names nobody")
endif()
string(REGEX REPLACE "^( \\.\n)+" "" terms "${terms}")
file(WRITE "${OUTPUT}/copyright" "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: zetaudiopluginhostui

Files: *
Copyright: ${holder}
License: Expat

License: Expat
${terms}")
