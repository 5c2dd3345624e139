#include "screen/ScreenPlacement.h"

#include <algorithm>
#include <cstdint>

namespace zetui::ui {

namespace {

using RectI = zetcore::geom::RectT<int>;

/// Room for a title bar.
constexpr std::int64_t titleHeight = 32;
/// The part of a title bar that the mouse needs to take hold of it.
constexpr std::int64_t reachableWidth = 96;
constexpr std::int64_t reachableHeight = 16;

/// Saved places may hold any number, so sides are counted in 64 bits.
struct Area
{
    std::int64_t left, top, right, bottom;
};

Area AreaOf(const RectI& rect)
{
    return {rect.left, rect.top, std::int64_t{rect.left} + rect.width, std::int64_t{rect.top} + rect.height};
}

bool IsReachable(const Area& content, const Area& screen)
{
    const std::int64_t width = std::min(content.right, screen.right) - std::max(content.left, screen.left);
    const std::int64_t height =
        std::min(content.top, screen.bottom) - std::max(content.top - titleHeight, screen.top);
    return width >= std::min(reachableWidth, content.right - content.left) && height >= reachableHeight;
}

std::int64_t Outside(std::int64_t place, std::int64_t from, std::int64_t to)
{
    return std::max<std::int64_t>({from - place, place - to, 0});
}

/// The distance from the content's middle to the screen, along both sides.
std::int64_t Distance(const Area& content, const Area& screen)
{
    return Outside((content.left + content.right) / 2, screen.left, screen.right) +
           Outside((content.top + content.bottom) / 2, screen.top, screen.bottom);
}

RectI MovedInto(const RectI& content, const Area& screen)
{
    const std::int64_t top = std::min(screen.top + titleHeight, screen.bottom);
    const std::int64_t width = std::min<std::int64_t>(content.width, screen.right - screen.left);
    const std::int64_t height = std::min<std::int64_t>(content.height, screen.bottom - top);
    const std::int64_t left = std::clamp<std::int64_t>(content.left, screen.left, screen.right - width);
    return {static_cast<int>(left),
            static_cast<int>(std::clamp<std::int64_t>(content.top, top, screen.bottom - height)),
            static_cast<int>(width), static_cast<int>(height)};
}

} // namespace

RectI KeepOnScreen(const RectI& content, const std::vector<RectI>& screens)
{
    const Area area = AreaOf(content);
    const bool reachable = std::any_of(screens.begin(), screens.end(), [&](const RectI& screen) {
        return IsReachable(area, AreaOf(screen));
    });
    if (reachable || screens.empty())
        return content;
    const auto nearest =
        std::min_element(screens.begin(), screens.end(), [&](const RectI& one, const RectI& other) {
            return Distance(area, AreaOf(one)) < Distance(area, AreaOf(other));
        });
    return MovedInto(content, AreaOf(*nearest));
}

RectI InMiddleOf(const RectI& screen, int width, int height)
{
    constexpr int title = static_cast<int>(titleHeight);
    return MovedInto({screen.left + (screen.width - width) / 2,
                      screen.top + title + (screen.height - title - height) / 2, width, height},
                     AreaOf(screen));
}

} // namespace zetui::ui
