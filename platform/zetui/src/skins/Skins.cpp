#include <zetui/skins/Skins.h>

#include <algorithm>
#include <array>
#include <stdexcept>

#include <zetcore/threads/MainThread.h>

#include "pixmill/QtConversions.h"
#include "skins/SkinRecord.h"
#include "skins/SkinStyle.h"

namespace zetui::skins {

namespace {

struct Choice
{
    const SkinRecord* skin = &V7Skin();
    Scheme scheme = Scheme::FollowDesktop;
};

/// The host's choice. `SetSkin` and `SetScheme` change it.
Choice& Chosen()
{
    static Choice choice;
    return choice;
}

} // namespace

std::span<const SkinRecord* const> SkinTable()
{
    static const std::array skins = {&ClassicSkin(), &V7Skin()};
    return skins;
}

const SkinRecord& RecordOf(Skin skin)
{
    const auto found = std::ranges::find(SkinTable(), skin, &SkinRecord::skin);
    if (found == SkinTable().end())
        throw std::invalid_argument("There is no skin " + std::to_string(static_cast<int>(skin)));
    return **found;
}

const SkinRecord& CurrentSkin()
{
    return *Chosen().skin;
}

std::vector<Skin> AllSkins()
{
    std::vector<Skin> skins;
    for (const SkinRecord* const record : SkinTable())
        skins.push_back(record->skin);
    return skins;
}

std::string NameOf(Skin skin)
{
    return std::string(RecordOf(skin).name);
}

const ListSizes& GetListSizes()
{
    return CurrentSkin().list;
}

void SetSkin(Skin skin)
{
    zetcore::threads::AssertMainThread();
    const SkinRecord& record = RecordOf(skin);
    if (Chosen().skin == &record)
        return;
    Chosen().skin = &record;
    SkinChanged();
}

Skin GetSkin()
{
    zetcore::threads::AssertMainThread();
    return CurrentSkin().skin;
}

bool IsRunningV7OrBeyond()
{
    return GetSkin() >= Skin::V7;
}

void SetScheme(Scheme scheme)
{
    zetcore::threads::AssertMainThread();
    if (Chosen().scheme == scheme)
        return;
    Chosen().scheme = scheme;
    SkinChanged();
}

bool IsDark()
{
    zetcore::threads::AssertMainThread();
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

pixmill::Color GetBoxOutlineColor()
{
    return CurrentSkin().boxOutline();
}

float GetCornerRadius()
{
    return static_cast<float>(CurrentSkin().radii.corner);
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
    const float normal = skins::CurrentSkin().fontSize;
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
