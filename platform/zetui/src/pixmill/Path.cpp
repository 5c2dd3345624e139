#include <zetui/pixmill/Path.h>

#include <zetcore/utility/NullPtrException.h>

namespace zetui::pixmill {

void Path::AddLine(float fromX, float fromY, float toX, float toY)
{
    segments.push_back({fromX, fromY, toX, toY});
}

} // namespace zetui::pixmill

namespace zetui::utils {

void FormRect(const pixmill::PathP& path, const zetcore::geom::RectT<float>& rect,
              const FourEdgeTupleT<bool>& edges)
{
    if (!path)
        zetcore::utility::DoThrowNullPtrException("PathP");
    const float right = rect.left + rect.width;
    const float bottom = rect.top + rect.height;
    if (edges.left)
        path->AddLine(rect.left, bottom, rect.left, rect.top);
    if (edges.top)
        path->AddLine(rect.left, rect.top, right, rect.top);
    if (edges.right)
        path->AddLine(right, rect.top, right, bottom);
    if (edges.bottom)
        path->AddLine(right, bottom, rect.left, bottom);
}

} // namespace zetui::utils
