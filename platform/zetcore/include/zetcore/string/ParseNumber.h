#pragma once

#include <charconv>
#include <concepts>
#include <optional>
#include <string_view>
#include <system_error>

namespace zetcore::string {

/// Reads the number that the whole text is: digits of the base, with a minus sign where the type has one.
/// Empty for any other text (blanks, a plus sign, something behind the number) and for a number that does not
/// fit.
template<std::integral Number>
std::optional<Number> ParseNumber(std::string_view text, int base = 10)
{
    Number number{};
    const char* const textEnd = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), textEnd, number, base);
    return error == std::errc() && end == textEnd ? std::optional(number) : std::nullopt;
}

/// Reads "1.5" and, in the general format, "15e-1". Here "inf" and "nan" are numbers.
template<std::floating_point Number>
std::optional<Number> ParseNumber(std::string_view text,
                                  std::chars_format format = std::chars_format::general)
{
    Number number{};
    const char* const textEnd = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), textEnd, number, format);
    return error == std::errc() && end == textEnd ? std::optional(number) : std::nullopt;
}

} // namespace zetcore::string
