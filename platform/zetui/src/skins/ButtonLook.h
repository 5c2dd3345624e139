#pragma once

#include <zetui/skins/Skins.h>

#include "skins/SkinColors.h"

namespace zetui::skins {

struct ControlState
{
    bool enabled = true, hovered = false, pressed = false, focused = false;
};

struct ButtonLook
{
    ControlState state;
    ButtonVariant variant = ButtonVariant::Primary;
    bool quiet = false;
    /// Return presses it.
    bool isDefault = false;
};

struct ButtonColors
{
    /// A fill or an outline whose alpha is 0 is not drawn.
    pixmill::Color fill, outline, text;
    /// The fill is the accent colour. An icon on it takes the colour of text on the accent colour.
    bool isAccented = false;
};

/// True for a button that is to stand out among the others. Each skin does that in its own way.
inline bool StandsOut(const ButtonLook& look)
{
    return look.variant == ButtonVariant::Accent || look.isDefault;
}

inline const pixmill::Color& Pick(const ControlState& state, const pixmill::Color& rest,
                                  const pixmill::Color& hovered, const pixmill::Color& pressed)
{
    if (state.pressed)
        return pressed;
    return state.hovered ? hovered : rest;
}

} // namespace zetui::skins
