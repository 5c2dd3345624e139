# cmake -DBUILD=the build folder -DHOST=the host's sources -DWORK=a scratch folder -DPLUGIN=a plug-in
#       -DGENERATOR=... -DCOMPILER=... -P InstalledHost.cmake
# Installs the build into a folder, moves the folder, builds the host on it, and runs the host and the installed
# programs.

function(run)
  cmake_parse_arguments(ARG "" "OUTPUT" "COMMAND" ${ARGN})
  execute_process(COMMAND ${ARG_COMMAND} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE error)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARG_COMMAND} ended with ${result}\n${output}\n${error}")
  endif()
  if(ARG_OUTPUT)
    set(${ARG_OUTPUT} "${output}" PARENT_SCOPE)
  endif()
endfunction()

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/prefs")
run(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${WORK}/first")
# The move shows that no installed file remembers where it was installed.
file(RENAME "${WORK}/first" "${WORK}/installed")

run(COMMAND ${CMAKE_COMMAND} -S "${HOST}" -B "${WORK}/host" -G "${GENERATOR}"
    "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_PREFIX_PATH=${WORK}/installed")
run(COMMAND ${CMAKE_COMMAND} --build "${WORK}/host")
run(COMMAND "${WORK}/host/host" "${WORK}/prefs" "${PLUGIN}" OUTPUT found)
if(NOT found MATCHES "^found: [^\n]+\n$")
  message(FATAL_ERROR "the host found: ${found}")
endif()

run(COMMAND "${WORK}/installed/bin/zetaudiopluginmanager" --prefs "${WORK}/prefs" --lang de list OUTPUT listed)
if(NOT listed MATCHES "vst2_effect")
  message(FATAL_ERROR "the installed manager lists: ${listed}")
endif()
file(REMOVE_RECURSE "${WORK}")
