#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zetcore::config {

/// The texts by their keys. The keys are without their default texts.
using StringTable = std::map<std::string, std::string, std::less<>>;

/// Reads the format that config/Localizer.h describes. Throws `std::runtime_error` that names the file and
/// the line. It does so for anything that is no entry, for a key that does not begin with "$$$/" or holds
/// "=", for a key that comes twice, and for bytes that are not UTF-8.
StringTable ParseStringTable(std::string_view text, const std::string& nameForErrors);

/// Replaces "@0", "@1" and so on by the arguments. A number without an argument stays as it is.
std::string InsertArguments(std::string_view text, const std::vector<std::string>& arguments);

} // namespace zetcore::config
