#pragma once

#include <zetui/skins/Skins.h>

namespace zetui::controls {

using Variant = skins::ButtonVariant;

struct ButtonComponents
{
    ButtonComponents() = default;
    ButtonComponents(Variant buttonVariant, bool isQuiet) : variant(buttonVariant), quiet(isQuiet) {}
    ButtonComponents(int buttonVariant, bool isQuiet)
        : variant(static_cast<Variant>(buttonVariant)), quiet(isQuiet)
    {}

    Variant variant = Variant::Primary;
    /// The button has no frame until the mouse is over it.
    bool quiet = false;
};

} // namespace zetui::controls
