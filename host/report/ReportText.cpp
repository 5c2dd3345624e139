#include "report/ReportText.h"

#include <algorithm>

namespace zetaudiopluginmanager {

namespace {

/// Whole lines, unless the first one is too long.
std::size_t LengthOfBeginning(std::string_view lines, std::size_t mostBytes)
{
    if (lines.size() <= mostBytes)
        return lines.size();
    const std::size_t lastEnd = lines.substr(0, mostBytes).rfind('\n');
    return lastEnd == std::string_view::npos ? mostBytes : lastEnd + 1;
}

} // namespace

std::string SizeText(std::uint64_t bytes)
{
    return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
}

void ReportText::Section(std::string_view title)
{
    if (!text.empty())
        text += '\n';
    text.append("== ").append(title).append(" ==\n");
}

void ReportText::Fact(std::string_view name, std::string_view value)
{
    if (!value.empty())
        text.append(name).append(": ").append(value).append("\n");
}

void ReportText::Line(std::string_view line)
{
    text.append(line).append("\n");
}

void ReportText::LeftOut(std::string_view lines)
{
    const auto count = std::max<std::ptrdiff_t>(1, std::count(lines.begin(), lines.end(), '\n'));
    Line("[" + std::to_string(count) + (count == 1 ? " line is" : " lines are") + " left out here]");
}

void ReportText::Lines(std::string_view lines)
{
    text += lines;
    if (!text.empty() && text.back() != '\n')
        text += '\n';
}

void ReportText::Beginning(std::string_view lines, std::size_t mostBytes)
{
    const std::size_t length = LengthOfBeginning(lines, mostBytes);
    Lines(lines.substr(0, length));
    if (length < lines.size())
        LeftOut(lines.substr(length));
}

void ReportText::BothEnds(std::string_view lines, std::size_t mostBytes)
{
    if (lines.size() <= mostBytes)
        return Lines(lines);
    const std::size_t beginning = LengthOfBeginning(lines, mostBytes / 2);
    std::size_t end = lines.size() - mostBytes / 2;
    const std::size_t lineEnd = lines.find('\n', end);
    if (lineEnd != std::string_view::npos && lineEnd + 1 < lines.size())
        end = lineEnd + 1;
    Lines(lines.substr(0, beginning));
    LeftOut(lines.substr(beginning, end - beginning));
    Lines(lines.substr(end));
}

} // namespace zetaudiopluginmanager
