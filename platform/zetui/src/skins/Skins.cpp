#include <zetui/skins/Skins.h>

#include "pixmill/QtConversions.h"
#include "skins/ControlPainting.h"
#include "skins/SkinColors.h"
#include "skins/SkinStyle.h"

namespace zetui::skins {

namespace {

struct Choice
{
    Skin skin = Skin::V7;
    Scheme scheme = Scheme::FollowDesktop;
};

/// The host has chosen this; `SetSkin` and `SetScheme` put it back.
Choice& Chosen()
{
    static Choice choice;
    return choice;
}

} // namespace

void SetSkin(Skin skin)
{
    if (Chosen().skin == skin)
        return;
    Chosen().skin = skin;
    SkinChanged();
}

Skin GetSkin()
{
    return Chosen().skin;
}

bool IsRunningV7OrBeyond()
{
    return GetSkin() >= Skin::V7;
}

void SetScheme(Scheme scheme)
{
    if (Chosen().scheme == scheme)
        return;
    Chosen().scheme = scheme;
    SkinChanged();
}

bool IsDark()
{
    if (Chosen().scheme == Scheme::FollowDesktop)
        return DesktopIsDark();
    return Chosen().scheme == Scheme::Dark;
}

} // namespace zetui::skins

namespace zetui::skins::utilities {

pixmill::Color GetDefaultTextColor()
{
    return CurrentColors().text;
}

pixmill::Color GetDefaultTextDisabledColor()
{
    return CurrentColors().disabledText;
}

pixmill::Color GetFailureSurfaceColor()
{
    return CurrentColors().negativeSurface;
}

float GetCornerRadius()
{
    return static_cast<float>(CornerRadius(GetSkin()));
}

} // namespace zetui::skins::utilities

namespace zetui::ui {

const ThemeProvider* GetDefaultThemeProvider()
{
    return nullptr;
}

pixmill::Color GetColor(int id)
{
    const skins::SkinColors& colors = skins::ColorsOf(skins::Skin::Classic, skins::IsDark());
    return id == kSectionOutlineColor ? colors.sectionOutline : colors.text;
}

std::string GetFontName(int)
{
    return pixmill::DefaultFontName();
}

float GetFontSize(int sizeId)
{
    const float normal = skins::GetSkin() == skins::Skin::Classic ? 11.0f : 12.0f;
    return sizeId == 1 ? normal + 1 : normal;
}

} // namespace zetui::ui

namespace zetui::skins::design {

pixmill::Color GetTableColor(const ui::ThemeProvider*, ColorFlags, int property, bool selected,
                             const SkinSet&)
{
    const SkinColors& colors = ColorsOf(Skin::V7, IsDark());
    if (property == kTableOutline)
        return colors.tableOutline;
    return selected ? colors.selectionText : colors.text;
}

} // namespace zetui::skins::design
