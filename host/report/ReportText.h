#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zetaudiopluginmanager {

/// "1 byte", "2 bytes".
std::string SizeText(std::uint64_t bytes);

/// Composes a report of sections that cannot grow without end. All texts are UTF-8, and bytes that are not
/// are kept for whoever makes them fit to read.
class ReportText
{
  public:
    void Section(std::string_view title);
    /// Adds "name: value", or nothing for an empty value.
    void Fact(std::string_view name, std::string_view value);
    void Line(std::string_view line);
    /// Adds whole lines, up to so many bytes, and says how many lines are left out.
    void Beginning(std::string_view lines, std::size_t mostBytes);
    /// The same, but it leaves out lines in the middle.
    void BothEnds(std::string_view lines, std::size_t mostBytes);

    const std::string& Text() const noexcept { return text; }

  private:
    void LeftOut(std::string_view lines);
    void Lines(std::string_view lines);

    std::string text;
};

} // namespace zetaudiopluginmanager
