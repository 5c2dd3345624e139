#include "output/PluginTable.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "terminal/DisplayText.h"

namespace zetaudiopluginmanager {

namespace {

constexpr std::size_t columnCount = 6;
constexpr std::size_t pathColumn = columnCount - 1;
constexpr std::string_view gap = "  ";
constexpr std::string_view reasonIndent = "    ";
constexpr std::array<std::string_view, columnCount> titles{"Name",    "Type",   "Status",
                                                           "Version", "Vendor", "Path"};
/// Until the table fits, columns shrink to their least widths, in this order.
constexpr std::array<std::pair<std::size_t, std::size_t>, 6> shrinkOrder{
    {{pathColumn, 24}, {4, 10}, {0, 18}, {3, 7}, {4, 6}, {0, 12}}};

constexpr std::string_view bold = "\x1b[1m", red = "\x1b[31m", dim = "\x1b[2m", plain = "\x1b[0m";

using Cells = std::array<std::string, columnCount>;
using Widths = std::array<std::size_t, columnCount>;

bool IsWorking(const PluginRow& row)
{
    return row.status == RowStatus::Working;
}

std::string StatusText(const PluginRow& row)
{
    switch (row.status) {
    case RowStatus::Banned:
        return "banned";
    case RowStatus::Failed:
        return "failed";
    case RowStatus::Unreadable:
        return "unreadable";
    case RowStatus::NotScanned:
        return "not scanned";
    case RowStatus::Working:
        break;
    }
    return row.enabled ? "working" : "working, off";
}

Cells CellsOf(const PluginRow& row)
{
    return {ForTerminal(row.name),
            ForTerminal(zetaudiofilterhost::TechnologyName(row.locator.GetTechnologyType())),
            StatusText(row),
            IsWorking(row) ? ForTerminal(row.version) : "-",
            IsWorking(row) ? ForTerminal(row.vendor) : "-",
            ForTerminal(row.locator.GetPath())};
}

Widths FitWidths(const std::vector<Cells>& lines, std::size_t limit)
{
    Widths widths{};
    for (std::size_t column = 0; column < columnCount; ++column) {
        widths[column] = titles[column].size();
        for (const Cells& cells : lines)
            widths[column] = std::max(widths[column], DisplayWidth(cells[column]));
    }
    std::size_t total = gap.size() * (columnCount - 1);
    for (const std::size_t width : widths)
        total += width;
    for (const auto& [column, least] : shrinkOrder) {
        if (limit == 0 || total <= limit)
            break;
        const std::size_t spare = widths[column] > least ? widths[column] - least : 0;
        const std::size_t taken = std::min(spare, total - limit);
        widths[column] -= taken;
        total -= taken;
    }
    return widths;
}

std::string Line(const Cells& cells, const Widths& widths)
{
    std::string line;
    for (std::size_t column = 0; column < columnCount; ++column) {
        const std::string text = column == pathColumn ? CutBeginning(cells[column], widths[column])
                                                      : CutEnd(cells[column], widths[column]);
        line += text;
        if (column + 1 < columnCount)
            line.append(widths[column] - DisplayWidth(text), ' ').append(gap);
    }
    return line;
}

std::string Paint(std::string text, std::string_view colour, const TableStyle& style)
{
    return style.colour ? std::string(colour).append(text).append(plain) : std::move(text);
}

std::string Number(std::ptrdiff_t count, std::string_view one, std::string_view several)
{
    return std::to_string(count).append(" ").append(count == 1 ? one : several);
}

/// Counts only the rows that are shown.
std::string CountLine(const std::vector<PluginRow>& rows, RowChoice choice)
{
    const auto count = [&rows](auto condition) { return std::count_if(rows.begin(), rows.end(), condition); };
    const auto working = count([](const PluginRow& row) { return IsWorking(row); });
    const auto off = count([](const PluginRow& row) { return IsWorking(row) && !row.enabled; });
    const auto banned = count([](const PluginRow& row) { return row.IsBanned(); });
    const std::string plugins = Number(working, "plug-in", "plug-ins");
    switch (choice) {
    case RowChoice::Enabled:
        return plugins + " on";
    case RowChoice::Disabled:
        return plugins + " off";
    case RowChoice::Banned:
        return Number(banned, "banned plug-in", "banned plug-ins");
    case RowChoice::Failed:
        return Number(std::ssize(rows), "plug-in does", "plug-ins do") + " not work, " +
               std::to_string(banned) + " of them banned";
    case RowChoice::All:
        break;
    }
    return plugins + (off > 0 ? " (" + std::to_string(off) + " off)" : "") + ", " + std::to_string(banned) +
           " banned";
}

} // namespace

std::string FormatPluginTable(std::vector<PluginRow> rows, const TableStyle& style, RowChoice choice)
{
    std::sort(rows.begin(), rows.end(), [](const PluginRow& left, const PluginRow& right) {
        const bool leftFails = !IsWorking(left), rightFails = !IsWorking(right);
        return std::tie(leftFails, left.name, left.locator) < std::tie(rightFails, right.name, right.locator);
    });
    const std::size_t limit = style.width == 0 ? 0 : std::max<std::size_t>(style.width, 80);
    std::vector<Cells> lines;
    for (const PluginRow& row : rows)
        lines.push_back(CellsOf(row));
    const Widths widths = FitWidths(lines, limit);

    Cells heading;
    std::copy(titles.begin(), titles.end(), heading.begin());
    std::string table = Paint(Line(heading, widths), bold, style) + "\n";
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const PluginRow& row = rows[index];
        const std::string line = Line(lines[index], widths);
        table += (!IsWorking(row) ? Paint(line, red, style)
                  : !row.enabled  ? Paint(line, dim, style)
                                  : line) +
                 "\n";
        for (const std::string& reasonLine : LinesForTerminal(row.reason)) {
            for (const std::string& part : Wrap(reasonLine, limit == 0 ? 0 : limit - reasonIndent.size()))
                table.append(reasonIndent).append(part).append("\n");
        }
    }
    return table + "\n" + CountLine(rows, choice) + "\n";
}

} // namespace zetaudiopluginmanager
