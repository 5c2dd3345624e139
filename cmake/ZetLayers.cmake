# This table says which of our libraries each library may use. At the end of the configuration every target is checked:
# all that it links, however that was written, must be in the table. So the layers stay as ARCHITECTURE.md draws them.
set(ZET_MAY_USE_zetcore "")
set(ZET_MAY_USE_zettransport zetcore)
set(ZET_MAY_USE_zetmarshal zetcore zettransport)
set(ZET_MAY_USE_zetaudiofilterhost zetcore)
set(ZET_MAY_USE_zetscanprotocol zetcore zetmarshal zetaudiofilterhost)
set(ZET_MAY_USE_zetaudiopluginhost zetcore zetaudiofilterhost)
set(ZET_MAY_USE_zetui zetcore)
set(ZET_MAY_USE_zetaudiopluginhostui
    zetcore zetscanprotocol zettransport zetmarshal zetaudiofilterhost zetaudiopluginhost zetui)
set(ZET_MAY_USE_zetaudiofilterscan
    zetcore zetscanprotocol zettransport zetmarshal zetaudiofilterhost zetaudiopluginhost)
set(ZET_MAY_USE_zetaudiopluginmanager
    zetcore zetscanprotocol zetaudiofilterhost zetaudiopluginhost zetui zetaudiopluginhostui)
# These are not shipped. The tests of the whole system see files and processes only.
set(ZET_MAY_USE_zettesting "")
set(ZET_MAY_USE_zete2e zetcore)
set(ZET_MAY_USE_zettools zetcore zetui zetaudiopluginhostui zetaudiopluginmanager)
set(ZET_MAY_USE_zetbench
    zetcore zetscanprotocol zettransport zetmarshal zetaudiofilterhost zetaudiopluginhost zetui zetaudiopluginhostui)
set(ZET_MAY_USE_zetfuzz
    zetcore zetscanprotocol zettransport zetmarshal zetaudiofilterhost zetaudiopluginhost zetui zetaudiopluginhostui
    zetaudiofilterscan)

# zet_layer(TARGET LAYER [TEST]): puts the target into the layer. A test may use the fixtures, too.
function(zet_layer target layer)
  if(NOT DEFINED ZET_MAY_USE_${layer})
    message(FATAL_ERROR "${target}: there is no layer '${layer}' in cmake/ZetLayers.cmake")
  endif()
  set_property(TARGET ${target} PROPERTY ZET_LAYER ${layer})
  if("TEST" IN_LIST ARGN)
    set_property(TARGET ${target} PROPERTY ZET_IS_TEST ON)
  endif()
endfunction()

# Gives the layer of a library; empty when the library is not ours.
function(zet_layer_of library result)
  set(layer "")
  if(TARGET ${library})
    get_property(layer TARGET ${library} PROPERTY ZET_LAYER)
  elseif(DEFINED ZET_MAY_USE_${library})
    set(layer ${library})
  endif()
  set(${result} "${layer}" PARENT_SCOPE)
endfunction()

function(zet_check_layers_of target)
  get_property(own TARGET ${target} PROPERTY ZET_LAYER)
  get_property(is_test TARGET ${target} PROPERTY ZET_IS_TEST)
  set(allowed ${own} ${ZET_MAY_USE_${own}})
  if(is_test)
    list(APPEND allowed zettesting)
  endif()
  get_property(linked TARGET ${target} PROPERTY LINK_LIBRARIES)
  get_property(passed_on TARGET ${target} PROPERTY INTERFACE_LINK_LIBRARIES)
  # Names inside generator expressions count, too.
  string(REGEX MATCHALL "[A-Za-z0-9_]+" names "${linked};${passed_on}")
  list(REMOVE_DUPLICATES names)
  foreach(library IN LISTS names)
    zet_layer_of(${library} layer)
    if(layer AND NOT own)
      message(FATAL_ERROR "${target} uses ${library} and has no layer: say LAYER, or call zet_layer")
    elseif(layer AND NOT layer IN_LIST allowed)
      message(FATAL_ERROR "${target} must not use ${library}: see the layers in cmake/ZetLayers.cmake")
    endif()
  endforeach()
endfunction()

function(zet_check_layers directory)
  get_property(targets DIRECTORY "${directory}" PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    zet_check_layers_of(${target})
  endforeach()
  get_property(subdirectories DIRECTORY "${directory}" PROPERTY SUBDIRECTORIES)
  foreach(subdirectory IN LISTS subdirectories)
    zet_check_layers("${subdirectory}")
  endforeach()
endfunction()

cmake_language(DEFER DIRECTORY "${CMAKE_SOURCE_DIR}" CALL zet_check_layers "${CMAKE_SOURCE_DIR}")
