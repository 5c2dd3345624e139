#pragma once

namespace zetcore::geom {

/// A rectangle, which is plain data: left, top, width, height.
template<typename T>
struct RectT
{
    T left{};
    T top{};
    T width{};
    T height{};

    friend bool operator==(const RectT&, const RectT&) = default;
};

} // namespace zetcore::geom
