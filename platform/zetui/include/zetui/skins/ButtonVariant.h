#pragma once

namespace zetui::skins {

/// How a button looks, in skins that tell buttons apart.
enum class ButtonVariant : int
{
    Primary = 0,
    Secondary = 1,
    Negative = 2,
    Accent = 3,
};

} // namespace zetui::skins
