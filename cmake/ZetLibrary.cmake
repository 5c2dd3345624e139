# The functions with which this project declares its libraries, programs and tests.

include("${CMAKE_CURRENT_LIST_DIR}/ZetLayers.cmake")

# What users get depends neither on the folder nor on the moment in which it was built.
if(NOT ZET_BUILD_TESTS AND NOT MSVC)
  # Files are named from the folder of the build, which is how the compiler's cache names them, too: what comes from the
  # cache is then the same as what is compiled without it. The last fitting rule counts.
  file(RELATIVE_PATH sources_from_build "${PROJECT_BINARY_DIR}" "${PROJECT_SOURCE_DIR}/")
  if(NOT sources_from_build MATCHES "^[./]*$")
    # The build is outside the sources, and no name may tell where.
    set(sources_from_build ./)
  endif()
  add_compile_options("-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=${sources_from_build}"
    "-ffile-prefix-map=${PROJECT_BINARY_DIR}=build" "-ffile-prefix-map=${PROJECT_BINARY_DIR}/=")
  if(MINGW)
    add_link_options(LINKER:--no-insert-timestamp)
  endif()
endif()

# Wine maps the sections of a file that begin at a page, and copies all others whenever a program starts.
set(ZET_PAGE_ALIGNMENT --file-alignment=4096)
if(ZET_BUILD_TESTS AND MINGW)
  add_link_options(LINKER:${ZET_PAGE_ALIGNMENT})
endif()

add_custom_target(zet_headers_alone)
# Builds the tests that run under the thread sanitizer.
add_custom_target(zet_thread_tests)

function(zet_compile_settings target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON POSITION_INDEPENDENT_CODE ON)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /WX /permissive- /utf-8 /Zc:__cplusplus /EHsc)
  else()
    target_compile_options(${target} PRIVATE
      -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
      -Wconversion -Wno-sign-conversion -Wextra-semi -Werror)
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 warns of overlapping copies where strings are merely joined (its bug 105651).
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(WIN32)
    target_compile_definitions(${target} PRIVATE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
  endif()
  zet_sanitize(${target})
endfunction()

# zet_join_files(TARGET TESTS|ALL): compiles several of the target's files together where ZET_JOIN_FILES wants that.
# Most of the time that a file takes goes into headers that its neighbours include, too.
function(zet_join_files target kind)
  if(ZET_JOIN_FILES STREQUAL "ALL" OR ZET_JOIN_FILES STREQUAL kind)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 24)
    if(NOT MSVC)
      # A name in one file may hide one of a file before it. Builds of single files warn of names hidden within one.
      target_compile_options(${target} PRIVATE -Wno-shadow)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      # What GCC takes for a header here is a file that only this unit includes.
      target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
    endif()
  endif()
endfunction()

# zet_test_settings(TARGET): how programs of tests are compiled.
function(zet_test_settings target)
  zet_compile_settings(${target})
  zet_join_files(${target} TESTS)
  if(NOT MSVC)
    # To optimize a test takes longer than to run it.
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O0>)
  endif()
endfunction()

function(zet_sanitize target)
  if(ZET_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${ZET_SANITIZE} -fno-omit-frame-pointer
                                             -fno-sanitize-recover=all)
    target_link_options(${target} PRIVATE -fsanitize=${ZET_SANITIZE})
    if(ZET_FUZZ)
      target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    elseif(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND ZET_SANITIZE MATCHES "undefined")
      # Checks that end the program without a message make it start in a quarter of the time. Without a message, the check
      # of functions cannot tell that two libraries' copies of a hidden type are one.
      target_compile_options(${target} PRIVATE -fsanitize-trap=undefined -fno-sanitize=function)
    endif()
    # The thread sanitizer does not understand the fences that Asio sets beside its locks.
    if(ZET_SANITIZE MATCHES "thread")
      target_compile_definitions(${target} PRIVATE BOOST_ASIO_DISABLE_FENCED_BLOCK)
    endif()
  endif()
endfunction()

# zet_export_map(LIBRARY RESULT namespaces...): the linker's script with which the library exports these namespaces.
function(zet_export_map name result)
  if(ZET_SANITIZE)
    # The sanitizers' own names must be shared by all libraries.
    set(${result} "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/exports.map" PARENT_SCOPE)
    return()
  endif()
  set(ZET_EXPORTED_NAMES "")
  foreach(namespace IN LISTS ARGN)
    string(LENGTH "${namespace}" length)
    set(mangled "${length}${namespace}")
    # Functions, types, thunks, and the variables of inline functions with their guards.
    foreach(kind IN ITEMS N NK TIN TSN TVN TTN TCN Thn*_N Thn*_NK Tv*_N Tv*_NK ZN ZNK GVN GVZN GVZNK)
      string(APPEND ZET_EXPORTED_NAMES "    _Z${kind}${mangled}*;\n")
    endforeach()
  endforeach()
  set(map "${PROJECT_BINARY_DIR}/generated/exports/${name}.map")
  configure_file("${CMAKE_CURRENT_FUNCTION_LIST_DIR}/exports.map.in" "${map}" @ONLY)
  set(${result} "${map}" PARENT_SCOPE)
endfunction()

# zet_library(NAME
#   SOURCES files, POSIX files, WIN files      the sources, and those of one platform
#   USES libs, PRIVATE_USES libs               libraries of ours
#   LINK targets, PRIVATE_LINK targets         libraries of others
#   [INCLUDE dir]                              the folder of public headers, include/ by default
#   [SHARES_HEADERS]                           the headers there are another library's, which checks them
#   [LAYER name]                               the layer that it is a part of; by default it is a layer itself
#   [ALSO_EXPORTS namespaces]                  namespaces beside its own whose names it exports
#   [STATIC])                                  makes a static library instead of a shared one
# A library's tests are declared with zet_test. They are linked with its objects, so that they reach what is not
# exported. Their fixtures are in the library's folder testing/, of which production code knows nothing.
function(zet_library name)
  cmake_parse_arguments(ARG "STATIC;SHARES_HEADERS" "INCLUDE;LAYER" "SOURCES;POSIX;WIN;USES;PRIVATE_USES;LINK;PRIVATE_LINK;ALSO_EXPORTS" ${ARGN})
  if(ARG_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "zet_library(${name}): unknown arguments ${ARG_UNPARSED_ARGUMENTS}")
  endif()
  # A part without an INCLUDE folder has no public headers; they are in its layer's library.
  set(has_headers ON)
  if(NOT ARG_INCLUDE)
    set(ARG_INCLUDE include)
    if(ARG_LAYER)
      set(has_headers OFF)
    endif()
  endif()
  # The compiler is told each folder by its plain name. It and its cache put "folder/." into debug information in two ways.
  set(include_folder "${CMAKE_CURRENT_SOURCE_DIR}/${ARG_INCLUDE}")
  cmake_path(NORMAL_PATH include_folder)
  string(REGEX REPLACE "/$" "" include_folder "${include_folder}")
  if(NOT ARG_LAYER)
    set(ARG_LAYER ${name})
  endif()
  if(WIN32)
    list(APPEND ARG_SOURCES ${ARG_WIN})
  else()
    list(APPEND ARG_SOURCES ${ARG_POSIX})
  endif()

  set(ZET_NAME ${name})
  string(TOUPPER ${name} ZET_UPPER)
  set(generated "${PROJECT_BINARY_DIR}/generated/${name}")
  configure_file("${CMAKE_CURRENT_FUNCTION_LIST_DIR}/Export.h.in" "${generated}/${name}/Export.h" @ONLY)

  add_library(${name}_objects OBJECT ${ARG_SOURCES})
  set_property(GLOBAL APPEND PROPERTY ZET_LIBRARIES ${name})
  zet_compile_settings(${name}_objects)
  zet_join_files(${name}_objects ALL)
  target_compile_definitions(${name}_objects PRIVATE ${name}_EXPORTS)
  target_include_directories(${name}_objects
    PUBLIC "${include_folder}" "${generated}"
    PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}/src")
  target_link_libraries(${name}_objects
    PUBLIC ${ARG_USES} ${ARG_LINK} PRIVATE ${ARG_PRIVATE_USES} ${ARG_PRIVATE_LINK})

  if(ARG_STATIC)
    add_library(${name} STATIC $<TARGET_OBJECTS:${name}_objects>)
  else()
    add_library(${name} SHARED $<TARGET_OBJECTS:${name}_objects>)
    # If CMake replaced the path on installation, it would pad it with empty entries, which mean the current folder.
    set_target_properties(${name} PROPERTIES BUILD_WITH_INSTALL_RPATH ON)
    if(NOT WIN32)
      set_target_properties(${name} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
      zet_export_map(${name} map ${name} ${ARG_ALSO_EXPORTS})
      target_link_options(${name} PRIVATE "LINKER:--version-script=${map}")
    endif()
  endif()
  # The libraries have the same file names, whichever compiler made them.
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  if(WIN32)
    set_target_properties(${name} PROPERTIES PREFIX "")
  endif()
  zet_sanitize(${name})
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_include_directories(${name} PUBLIC
    "$<BUILD_INTERFACE:${include_folder}>" "$<BUILD_INTERFACE:${generated}>")
  target_link_libraries(${name} PUBLIC ${ARG_USES} ${ARG_LINK} PRIVATE ${ARG_PRIVATE_USES} ${ARG_PRIVATE_LINK})
  set_property(TARGET ${name} PROPERTY ZET_PRIVATE_LINK ${ARG_PRIVATE_USES} ${ARG_PRIVATE_LINK})
  zet_layer(${name} ${ARG_LAYER})
  zet_layer(${name}_objects ${ARG_LAYER})

  if(has_headers AND NOT ARG_SHARES_HEADERS)
    zet_check_headers_alone(${name} "${include_folder}")
  endif()
endfunction()

# zet_header_library(NAME [USES libs]): declares a library of headers only.
function(zet_header_library name)
  cmake_parse_arguments(ARG "" "" "USES;LINK" ${ARGN})
  add_library(${name} INTERFACE)
  zet_layer(${name} ${name})
  target_include_directories(${name} INTERFACE "${CMAKE_CURRENT_SOURCE_DIR}/include")
  target_link_libraries(${name} INTERFACE ${ARG_USES} ${ARG_LINK})
  zet_check_headers_alone(${name} "${CMAKE_CURRENT_SOURCE_DIR}/include")
endfunction()

# Every public header must compile when it is the only include. The target zet_headers_alone compiles each one so.
function(zet_check_headers_alone name include_dir)
  file(GLOB_RECURSE headers RELATIVE "${include_dir}" CONFIGURE_DEPENDS "${include_dir}/*.h")
  # The tests' fixtures need what only the tests are linked with.
  list(FILTER headers EXCLUDE REGEX "^testing/")
  set(proofs "")
  foreach(header IN LISTS headers)
    string(MAKE_C_IDENTIFIER "${header}" id)
    set(proof "${PROJECT_BINARY_DIR}/generated/headers/${id}.cpp")
    file(CONFIGURE OUTPUT "${proof}" CONTENT "#include <${header}>\n#include <${header}>\n")
    list(APPEND proofs "${proof}")
  endforeach()
  if(proofs)
    add_library(${name}_headers_alone OBJECT EXCLUDE_FROM_ALL ${proofs})
    target_link_libraries(${name}_headers_alone PRIVATE ${name})
    zet_compile_settings(${name}_headers_alone)
    zet_layer_of(${name} layer)
    zet_layer(${name}_headers_alone ${layer})
    add_dependencies(zet_headers_alone ${name}_headers_alone)
  endif()
endfunction()

# zet_program(NAME LAYER name SOURCES files, POSIX files, WIN files USES libs LINK targets)
function(zet_program name)
  cmake_parse_arguments(ARG "" "LAYER" "SOURCES;POSIX;WIN;USES;LINK" ${ARGN})
  if(NOT ARG_LAYER)
    message(FATAL_ERROR "zet_program(${name}): which LAYER does it belong to?")
  endif()
  if(WIN32)
    list(APPEND ARG_SOURCES ${ARG_WIN})
  else()
    list(APPEND ARG_SOURCES ${ARG_POSIX})
  endif()
  add_executable(${name} ${ARG_SOURCES})
  zet_compile_settings(${name})
  zet_layer(${name} ${ARG_LAYER})
  target_include_directories(${name} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE ${ARG_USES} ${ARG_LINK})
endfunction()

# zet_test(LIBRARY FILES tests [USES libs] [LINK targets] [NEEDS targets] [NAME name] [THREADS] [SCANNERS])
# Makes one program of the tests that stand beside a library's sources, linked with the library's objects.
# THREADS: it draws nothing, and runs under the thread sanitizer, too. SCANNERS: it starts scanners.
function(zet_test library)
  if(NOT ZET_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(ARG "THREADS;SCANNERS" "NAME" "FILES;USES;LINK;NEEDS" ${ARGN})
  if(NOT ARG_NAME)
    set(ARG_NAME ${library}Test)
  endif()
  add_executable(${ARG_NAME} ${ARG_FILES})
  zet_test_settings(${ARG_NAME})
  zet_layer_of(${library} layer)
  zet_layer(${ARG_NAME} ${layer} TEST)
  target_compile_definitions(${ARG_NAME} PRIVATE ${library}_EXPORTS)
  target_include_directories(${ARG_NAME} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}/src")
  get_property(private_link TARGET ${library} PROPERTY ZET_PRIVATE_LINK)
  target_link_libraries(${ARG_NAME} PRIVATE ${library}_objects ${private_link}
                                            ${ARG_USES} ${ARG_LINK} zettesting GTest::gmock GTest::gtest_main)
  if(ARG_NEEDS)
    add_dependencies(${ARG_NAME} ${ARG_NEEDS})
  endif()
  set(options "")
  foreach(option IN ITEMS THREADS SCANNERS)
    if(ARG_${option})
      list(APPEND options ${option})
    endif()
  endforeach()
  zet_discover_tests(${ARG_NAME} ${options})
endfunction()

# zet_discover_tests(TARGET [THREADS] [SCANNERS])
function(zet_discover_tests target)
  if(WIN32)
    # Programs in other folders, such as the scanner's stand-in, find our libraries through PATH. A program takes
    # long to start under an emulator, so that all of its tests are one test for ctest.
    add_test(NAME ${target} COMMAND ${target})
    # The slowest program takes about three minutes. The limit ends one that hangs.
    set_tests_properties(${target} PROPERTIES TIMEOUT 600 ENVIRONMENT_MODIFICATION
      "PATH=path_list_prepend:${CMAKE_RUNTIME_OUTPUT_DIRECTORY};WINEPATH=cmake_list_prepend:Z:${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    if("SCANNERS" IN_LIST ARGN)
      # The shared block that carries a scanner's port belongs to the user's whole session, and the tests count the
      # scanners that still run in the session.
      set_tests_properties(${target} PROPERTIES RESOURCE_LOCK scanners)
    endif()
    return()
  endif()
  include(GoogleTest)
  set(labels "")
  if("THREADS" IN_LIST ARGN)
    add_dependencies(zet_thread_tests ${target})
    set(labels LABELS threads)
  endif()
  gtest_discover_tests(${target}
    DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 900 ${labels})
endfunction()
