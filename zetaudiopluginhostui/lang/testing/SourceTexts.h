#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zetaudiopluginhostui {

/// The default texts of each key. A key has several when places of the program disagree.
using SourceTexts = std::map<std::string, std::set<std::string>>;

/// The string literals of C++ source, unescaped. Literals that follow each other are one. Comments are left
/// out.
std::vector<std::string> StringLiterals(std::string_view source);

/// Every localised text in the C++ sources and layout archives below `folder`, except those of tests. Throws
/// `std::runtime_error`, which names the file that cannot be read or the key that has no text.
SourceTexts CollectSourceTexts(const std::filesystem::path& folder);

} // namespace zetaudiopluginhostui
