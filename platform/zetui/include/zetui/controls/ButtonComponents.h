#pragma once

#include <zetui/skins/ButtonVariant.h>

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
    /// Without a frame until it is pointed at.
    bool quiet = false;
};

} // namespace zetui::controls
