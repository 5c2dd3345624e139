cmake_minimum_required(VERSION 3.25)
# cmake -DBUILD=the build folder -DWORK=a scratch folder -DPLUGIN=a plug-in
#       -DGENERATOR=... -DCOMPILER=... -DFOREIGN=ForeignNames.h -DLISTS=lists_test.py -P InstalledHost.cmake
# Installs the build into a folder, moves the folder, builds the documents' examples on it, and runs them and the
# installed programs.

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

set(prefix "${WORK}/installed")
file(GLOB_RECURSE headers RELATIVE "${prefix}/include" "${prefix}/include/*.h")
include("${CMAKE_CURRENT_LIST_DIR}/../ZetPublicHeaders.cmake")
list(SORT headers)
list(SORT ZET_PUBLIC_HEADERS)
if(NOT headers STREQUAL ZET_PUBLIC_HEADERS)
  message(FATAL_ERROR "other headers are installed than the public ones: ${headers}")
endif()
# The second list has just what the first one includes, so that no header is installed by chance, and none is missing.
set(open ${ZET_STABLE_HEADERS})
set(included "")
while(open)
  list(POP_FRONT open header)
  file(STRINGS "${prefix}/include/${header}" lines REGEX "^#include <zet[a-z]+/")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "^#include <(.*)>.*$" "\\1" name "${line}")
    if(NOT name IN_LIST ZET_STABLE_HEADERS AND NOT name IN_LIST included)
      list(APPEND included "${name}")
      list(APPEND open "${name}")
    endif()
  endforeach()
endwhile()
list(SORT included)
list(SORT ZET_NEEDED_HEADERS)
if(NOT included STREQUAL ZET_NEEDED_HEADERS)
  message(FATAL_ERROR "the stable headers include these, and the list of needed ones has others: ${included}")
endif()
list(LENGTH headers count)
if(count LESS 40 OR count GREATER 60)
  message(FATAL_ERROR "there are ${count} installed headers")
endif()
foreach(header IN LISTS headers)
  file(STRINGS "${prefix}/include/${header}" tests REGEX "FaultPoint|ClearQueuedCalls|ResetTrace|[Ff]or tests")
  if(tests)
    message(FATAL_ERROR "${header} is installed, but has what is for tests only: ${tests}")
  endif()
endforeach()
execute_process(COMMAND ${CMAKE_COMMAND} "-DHEADERS=${headers}" "-DINCLUDES=${prefix}/include"
  "-DCOMPILER=${COMPILER}" "-DWORK=${WORK}/headers" "-DFOREIGN=${FOREIGN}"
  -P "${CMAKE_CURRENT_LIST_DIR}/SurvivingHeaders.cmake" COMMAND_ERROR_IS_FATAL ANY)
set(documents "${prefix}/share/doc/zetaudiopluginhostui")
# Each function and class that the document names is declared in what is installed.
file(READ "${documents}/docs/embedding.md" embedding)
string(REGEX MATCHALL "zet[a-z]+::([a-z]+::)*[A-Z][A-Za-z0-9]*" names "${embedding}")
list(REMOVE_DUPLICATES names)
list(LENGTH names count)
if(count LESS 20)
  message(FATAL_ERROR "embedding.md names only these: ${names}")
endif()
set(uses "")
foreach(header IN LISTS headers)
  string(APPEND uses "#include <${header}>\n")
endforeach()
set(number 0)
foreach(name IN LISTS names)
  math(EXPR number "${number} + 1")
  string(APPEND uses "namespace use${number} { using ${name}; }\n")
endforeach()
file(WRITE "${WORK}/uses.cpp" "${uses}")
run(COMMAND "${COMPILER}" -std=c++20 -fsyntax-only "-I${prefix}/include" "${WORK}/uses.cpp")
foreach(file IN ITEMS LICENSE SECURITY.md docs/troubleshooting.md docs/embedding.md docs/examples/scan/main.cpp)
  if(NOT EXISTS "${documents}/${file}")
    message(FATAL_ERROR "${file} is not installed")
  endif()
endforeach()
find_program(PYTHON NAMES python3 REQUIRED)
foreach(list IN ITEMS links manuals names)
  run(COMMAND "${PYTHON}" -B "${LISTS}" --source "${documents}" --programs "${prefix}/bin" ${list})
endforeach()

# build_host(NAME options...): configures and builds the example of this name in WORK.
function(build_host name)
  run(COMMAND ${CMAKE_COMMAND} -S "${EXAMPLES}/${name}" -B "${WORK}/${name}" -G "${GENERATOR}"
      "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_PREFIX_PATH=${prefix}" ${ARGN})
  run(COMMAND ${CMAKE_COMMAND} --build "${WORK}/${name}")
endfunction()

# Whoever wants the scan alone has no Qt.
# The examples are those that were installed.
set(EXAMPLES "${documents}/docs/examples")
build_host(scan -DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON -DCMAKE_DISABLE_FIND_PACKAGE_Qt5=ON)
file(MAKE_DIRECTORY "${WORK}/elsewhere")
execute_process(COMMAND "${WORK}/scan/my_scan" "${WORK}/prefs" "${PLUGIN}" WORKING_DIRECTORY "${WORK}/elsewhere"
  RESULT_VARIABLE result OUTPUT_VARIABLE found ERROR_VARIABLE error)
if(NOT result EQUAL 0 OR NOT found MATCHES "^found: [^\n]+\n$" OR NOT error MATCHES "0/1 [^\n]*vst2_effect")
  message(FATAL_ERROR "the host ended with ${result} and found: ${found}\n${error}")
endif()
run(COMMAND ldd "${WORK}/scan/my_scan" OUTPUT needed)
# A program names the libraries with the first two numbers of their version.
if(NOT needed MATCHES "libzetaudiopluginscan\\.so\\.[0-9]+\\.[0-9]+ " OR NOT needed MATCHES "libzetcore" OR needed MATCHES "Qt|not found|xcb")
  message(FATAL_ERROR "the scan alone needs these libraries: ${needed}")
endif()

build_host(dialog)
execute_process(COMMAND ${CMAKE_COMMAND} -E env --unset=DISPLAY --unset=WAYLAND_DISPLAY --unset=QT_QPA_PLATFORM
  "${WORK}/dialog/my_host" "${WORK}/prefs" RESULT_VARIABLE result ERROR_VARIABLE error)
if(NOT result EQUAL 3 OR NOT error MATCHES "there is no display")
  message(FATAL_ERROR "the host with the dialog ended with ${result}: ${error}")
endif()

# expect_refusal(NAME MESSAGE): CMake must refuse the project of this name in WORK, with this message.
function(expect_refusal name message)
  execute_process(COMMAND ${CMAKE_COMMAND} -S "${WORK}/${name}" -B "${WORK}/${name}/build" -G "${GENERATOR}"
    "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_PREFIX_PATH=${prefix}" RESULT_VARIABLE result ERROR_VARIABLE error
    OUTPUT_QUIET)
  if(result EQUAL 0 OR NOT error MATCHES "${message}")
    message(FATAL_ERROR "the project '${name}' was not refused with \"${message}\": ${error}")
  endif()
endfunction()

# A host that links the module as well as the scan alone would have everything twice. CMake refuses it.
file(WRITE "${WORK}/both/CMakeLists.txt" "cmake_minimum_required(VERSION 3.25)
project(both LANGUAGES CXX)
find_package(zetaudiopluginhostui REQUIRED COMPONENTS dialog scan)
file(WRITE main.cpp \"int main() {}\")
add_executable(both main.cpp)
target_link_libraries(both PRIVATE zetaudiopluginhostui::zetaudiopluginhostui zetaudiopluginhostui::scan)
")
expect_refusal(both "ZET_DIALOG_OR_SCAN")

# A component that there is not is named, with those that there are.
file(WRITE "${WORK}/unknown/CMakeLists.txt" "cmake_minimum_required(VERSION 3.25)
project(unknown LANGUAGES CXX)
find_package(zetaudiopluginhostui REQUIRED COMPONENTS scan scanner)
")
expect_refusal(unknown "no component 'scanner'; there are[ \n]+'dialog' and 'scan'")

run(COMMAND "${PYTHON}" -B "${EXAMPLES}/process/scan.py" "${prefix}/bin/zetaudiopluginmanager" "${WORK}/prefs"
    "${PLUGIN}" OUTPUT told)
if(NOT told MATCHES "^1/1 working [^\n]*vst2_effect[^\n]*\ndone: 1 plug-ins in 1 files\n$")
  message(FATAL_ERROR "the example in Python says: ${told}")
endif()

run(COMMAND "${WORK}/installed/bin/zetaudiopluginmanager" --prefs "${WORK}/prefs" --lang de list OUTPUT listed)
if(NOT listed MATCHES "vst2_effect")
  message(FATAL_ERROR "the installed manager lists: ${listed}")
endif()
file(REMOVE_RECURSE "${WORK}")
