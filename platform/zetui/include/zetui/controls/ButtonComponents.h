#pragma once

namespace zetui::controls {

/// How a button looks in the V7 skin.
enum class Variant : int
{
    Primary = 0,
    Secondary = 1,
    Negative = 2,
    Accent = 3,
};

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
