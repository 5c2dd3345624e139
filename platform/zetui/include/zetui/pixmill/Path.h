#pragma once

#include <vector>

#include <zetcore/geom/RectT.h>
#include <zetui/Export.h>
#include <zetui/pixmill/Types.h>

namespace zetui::pixmill {

/// Line segments.
class ZETUI_API Path
{
  public:
    struct Segment
    {
        float fromX, fromY, toX, toY;
        friend bool operator==(const Segment&, const Segment&) = default;
    };

    void AddLine(float fromX, float fromY, float toX, float toY);
    const std::vector<Segment>& Segments() const noexcept { return segments; }

  private:
    std::vector<Segment> segments;
};

} // namespace zetui::pixmill

namespace zetui::utils {

/// A value for each of the four edges.
template<typename T>
struct FourEdgeTupleT
{
    T left, top, right, bottom;
};

/// Adds the rectangle's chosen edges to the path. A null path raises the null-pointer error.
ZETUI_API void FormRect(const pixmill::PathP& path, const zetcore::geom::RectT<float>& rect,
                        const FourEdgeTupleT<bool>& edges);

} // namespace zetui::utils
