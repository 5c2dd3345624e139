#include "nodes/ReadingOrder.h"

#include <algorithm>
#include <numeric>

namespace zetui::ui {

std::vector<int> ReadingOrder(const std::vector<QRect>& rectangles)
{
    const auto at = [&](int index) -> const QRect& { return rectangles[static_cast<std::size_t>(index)]; };
    std::vector<int> order(rectangles.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int left, int right) { return at(left).center().y() < at(right).center().y(); });
    for (auto begin = order.begin(); begin != order.end();) {
        const QRect& first = at(*begin);
        const auto end = std::find_if(begin, order.end(), [&](int index) {
            return at(index).center().y() > first.bottom() && at(index).top() > first.center().y();
        });
        std::stable_sort(begin, end, [&](int left, int right) { return at(left).left() < at(right).left(); });
        begin = end;
    }
    return order;
}

} // namespace zetui::ui
