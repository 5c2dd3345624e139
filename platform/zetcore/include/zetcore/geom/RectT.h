#pragma once

namespace zetcore::geom {

/// A rectangle: left, top, width, height. Plain and trivially copyable.
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
