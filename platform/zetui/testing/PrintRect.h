#pragma once

#include <ostream>

#include <zetcore/geom/RectT.h>

namespace zetcore::geom {

/// For the messages of failed tests.
template<typename T>
void PrintTo(const RectT<T>& rect, std::ostream* out)
{
    *out << rect.left << ", " << rect.top << ", " << rect.width << " x " << rect.height;
}

} // namespace zetcore::geom
