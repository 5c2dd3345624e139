#pragma once

#include <vector>

namespace zetui::controls {

/// A column that does not have its room for itself.
struct ColumnShare
{
    enum class Kind
    {
        /// The program or the user gave it its width, and it keeps it.
        Keeps,
        /// It becomes narrower only where it would push the others away.
        Usual,
        /// It becomes narrower where the columns have no room together.
        GivesWay,
    };
    int width;
    Kind kind = Kind::Keeps;
};

/// The widths with which the columns are shown in a room that is so wide. They are the columns' own where
/// these have room. Otherwise those that give way become narrower, to no less than four times `least`. Then
/// very wide ones do, and in the end again those that give way, to no less than `least`. What is still
/// missing must be scrolled to.
std::vector<int> ShareWidths(const std::vector<ColumnShare>& columns, int room, int least);

} // namespace zetui::controls
