# The functions with which a module carries files inside itself.

# zet_module_resources(sources type NAME file [NAME file ...])
# Appends a generated file to the list `sources`. It makes the given files resources of the module that it is compiled
# into: on Windows it is a resource script, elsewhere a table in the shared object (see OS_ResourceManager.h). The
# files' bytes are kept as they are. A test program that holds the module's objects needs zet_exports_resources.
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
    # Each module has a table, and all tables have the same name. A sanitizer would report that as an error.
    if(ZET_SANITIZE)
      set_source_files_properties("${made}" PROPERTIES COMPILE_OPTIONS "-fno-sanitize=all")
    endif()
  endif()
  set(${sources} ${${sources}} "${made}" PARENT_SCOPE)
endfunction()

# Lets a program export the resource table, as a shared object does, so that the table is found.
function(zet_exports_resources target)
  set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
endfunction()
