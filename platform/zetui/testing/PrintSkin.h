#pragma once

#include <ostream>

#include <zetui/skins/Skins.h>

/// Names for what tests are run with.
namespace zetui::skins {

inline void PrintTo(Skin skin, std::ostream* stream)
{
    *stream << NameOf(skin);
}

inline void PrintTo(Scheme scheme, std::ostream* stream)
{
    *stream << (scheme == Scheme::Dark ? "dark" : "light");
}

} // namespace zetui::skins
