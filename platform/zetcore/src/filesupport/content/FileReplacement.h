#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <zetcore/filesupport/content/FileUtils.h>

namespace zetcore::filesupport {

/// Does what `FileUtils::ReplaceContent` does, under a name that no system header redefines. Throws
/// `file_exception`.
void ReplaceWholeFile(const std::wstring& path, std::string_view bytes, Durability durability);

/// Makes a name for a temporary file that no other process or call uses at the same time.
std::string MakeTemporaryName();

} // namespace zetcore::filesupport
