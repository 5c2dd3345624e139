#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zetaudiopluginhost {

/// Finds the texts that stand in a sentence for "@0", "@1" and so on, by number. Each of them has at least
/// one character, and the earliest end that the rest allows. Nothing when the sentence is another one.
std::optional<std::vector<std::string>> MatchSentence(std::string_view pattern, std::string_view sentence);

} // namespace zetaudiopluginhost
