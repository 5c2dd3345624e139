#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zetaudiopluginhostui {

/// Key to its default texts; more than one where places of the program disagree.
using SourceTexts = std::map<std::string, std::set<std::string>>;

/// The string literals of C++ source, unescaped; those that follow each other make one. Not those in
/// comments.
std::vector<std::string> StringLiterals(std::string_view source);

/// Every localised text that the C++ sources and layout archives below `folder` name, tests and their
/// archives left out. Throws `std::runtime_error` naming a file that cannot be read, or a key without a text.
SourceTexts CollectSourceTexts(const std::filesystem::path& folder);

} // namespace zetaudiopluginhostui
