#include "tree/ColumnShares.h"

#include <algorithm>

namespace zetui::controls {

std::vector<int> ShareWidths(const std::vector<ColumnShare>& columns, int room, int least)
{
    std::vector<int> widths;
    int missing = -room;
    for (const ColumnShare& column : columns) {
        widths.push_back(column.width);
        missing += column.width;
    }
    const auto narrow = [&](ColumnShare::Kind kind, int floor) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (columns[i].kind != kind || missing <= 0)
                continue;
            const int taken = std::clamp(widths[i] - floor, 0, missing);
            widths[i] -= taken;
            missing -= taken;
        }
    };
    // Wider than this, a column pushes the others away.
    constexpr int neverTooWide = 280;
    const int widest = std::max(neverTooWide, room * 2 / 5);
    narrow(ColumnShare::Kind::GivesWay, 4 * least);
    narrow(ColumnShare::Kind::Usual, widest);
    narrow(ColumnShare::Kind::GivesWay, least);
    return widths;
}

} // namespace zetui::controls
