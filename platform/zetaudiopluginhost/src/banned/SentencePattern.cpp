#include "banned/SentencePattern.h"

#include <algorithm>

namespace zetaudiopluginhost {

namespace {

bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// The start of the first placeholder. The pattern's end when there is none.
std::size_t PlaceholderIn(std::string_view pattern)
{
    for (std::size_t at = 0; at + 1 < pattern.size(); ++at)
        if (pattern[at] == '@' && IsDigit(pattern[at + 1]))
            return at;
    return pattern.size();
}

} // namespace

std::optional<std::vector<std::string>> MatchSentence(std::string_view pattern, std::string_view sentence)
{
    std::vector<std::string> arguments;
    for (;;) {
        const std::size_t placeholder = PlaceholderIn(pattern);
        const std::string_view words = pattern.substr(0, placeholder);
        if (placeholder == pattern.size())
            return sentence == words ? std::optional(std::move(arguments)) : std::nullopt;
        if (!sentence.starts_with(words))
            return std::nullopt;
        sentence.remove_prefix(words.size());
        const auto number = static_cast<std::size_t>(pattern[placeholder + 1] - '0');
        pattern.remove_prefix(placeholder + 2);

        const std::size_t next = PlaceholderIn(pattern);
        const std::string_view after = pattern.substr(0, next);
        // The last argument ends where the sentence's last words begin.
        const std::size_t end = next < pattern.size()       ? sentence.find(after, 1)
                                : sentence.ends_with(after) ? sentence.size() - after.size()
                                                            : std::string_view::npos;
        if (end == std::string_view::npos || end == 0)
            return std::nullopt;
        arguments.resize(std::max(arguments.size(), number + 1));
        arguments[number] = sentence.substr(0, end);
        sentence.remove_prefix(end);
    }
}

} // namespace zetaudiopluginhost
