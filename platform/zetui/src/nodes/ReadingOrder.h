#pragma once

#include <vector>

#include <QRect>

namespace zetui::ui {

/// The order in which people read what lies in these rectangles: line by line, and each line from the left.
/// Rectangles are in one line when the middle of one is beside the other. The answer has their indexes.
std::vector<int> ReadingOrder(const std::vector<QRect>& rectangles);

} // namespace zetui::ui
