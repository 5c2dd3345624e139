# How a module carries files inside itself.

# zet_module_resources(sources type NAME file [NAME file ...])
# Appends to the list `sources` what makes the files resources of the module that they are compiled into: a
# resource script on Windows, elsewhere a table in the shared object (see OS_ResourceManager.h). The bytes are
# kept as they are. A test program that holds the module's objects needs zet_exports_resources.
function(zet_module_resources sources type)
  list(LENGTH ARGN count)
  math(EXPR odd "${count} % 2")
  if(count EQUAL 0 OR odd)
    message(FATAL_ERROR "zet_module_resources: names and files come in pairs")
  endif()
  set(rest ${ARGN})
  set(names "")
  set(files "")
  set(script "")
  while(rest)
    list(POP_FRONT rest name file)
    get_filename_component(file "${file}" ABSOLUTE)
    list(APPEND names "${name}")
    list(APPEND files "${file}")
    string(APPEND script "${name} ${type} \"${file}\"\n")
  endwhile()
  set(generated "${PROJECT_BINARY_DIR}/generated/resources/${sources}")
  if(WIN32)
    file(CONFIGURE OUTPUT "${generated}.rc" CONTENT "${script}" @ONLY)
    set_property(SOURCE "${generated}.rc" PROPERTY OBJECT_DEPENDS "${files}")
    set(made "${generated}.rc")
  else()
    set(made "${generated}.cpp")
    add_custom_command(OUTPUT "${made}"
      COMMAND ${CMAKE_COMMAND} "-DOUTPUT=${made}" "-DTYPE=${type}" "-DNAMES=${names}" "-DFILES=${files}"
              -P "${PROJECT_SOURCE_DIR}/cmake/ZetResourceTable.cmake"
      DEPENDS ${files} "${PROJECT_SOURCE_DIR}/cmake/ZetResourceTable.cmake"
      VERBATIM)
    # Each module has a table of this one name, which a sanitizer would take for a clash.
    if(ZET_SANITIZE)
      set_source_files_properties("${made}" PROPERTIES COMPILE_OPTIONS "-fno-sanitize=all")
    endif()
  endif()
  set(${sources} ${${sources}} "${made}" PARENT_SCOPE)
endfunction()

# A program finds the resource table among what it exports, as a shared object does.
function(zet_exports_resources target)
  set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
endfunction()
