# Writes the source file OUTPUT, a table of the files in FILES with their NAMES, all resources of one TYPE.
set(arrays "")
set(entries "")
set(number 0)
foreach(name file IN ZIP_LISTS NAMES FILES)
  file(READ "${file}" hexadecimal HEX)
  if(hexadecimal STREQUAL "")
    message(FATAL_ERROR "${file} is empty")
  endif()
  string(REGEX REPLACE "(................................)" "\\1\n" lines "${hexadecimal}")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${lines}")
  string(APPEND arrays "constexpr unsigned char bytes${number}[] = {\n${bytes}};\n")
  string(APPEND entries "    {\"${name}\", \"${TYPE}\", bytes${number}, sizeof bytes${number}},\n")
  math(EXPR number "${number} + 1")
endforeach()
file(WRITE "${OUTPUT}" "#include <zetui/utility/OS_ResourceManager.h>

namespace {

${arrays}
} // namespace

extern \"C\" {

__attribute__((visibility(\"default\"))) extern const zetui::utility::EmbeddedResource zetModuleResources[];
const zetui::utility::EmbeddedResource zetModuleResources[] = {
${entries}    {nullptr, nullptr, nullptr, 0},
};
}
")
