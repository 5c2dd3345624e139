#pragma once

#include <string>
#include <vector>

#include <zetui/Export.h>
#include <zetui/pixmill/Types.h>

/// The looks that a host can choose from, and their colours and fonts. Colours follow the desktop's light or
/// dark scheme. Main thread.
namespace zetui::skins {

enum class Skin
{
    Classic,
    V7,
};

/// Call it before any window is open. Without a call the skin is V7.
ZETUI_API void SetSkin(Skin skin);
ZETUI_API Skin GetSkin();
ZETUI_API bool IsRunningV7OrBeyond();
/// All skins, the oldest first.
ZETUI_API std::vector<Skin> AllSkins();
/// The skin's name in small letters, as users type it.
ZETUI_API std::string NameOf(Skin skin);

/// How a button looks, in skins that tell buttons apart.
enum class ButtonVariant : int
{
    Primary = 0,
    Secondary = 1,
    Negative = 2,
    Accent = 3,
};

enum class Scheme
{
    FollowDesktop,
    Light,
    Dark,
};
ZETUI_API void SetScheme(Scheme scheme);
ZETUI_API bool IsDark();

} // namespace zetui::skins

namespace zetui::skins::utilities {

ZETUI_API pixmill::Color GetDefaultTextColor();
ZETUI_API pixmill::Color GetDefaultTextDisabledColor();
/// The surface behind a text that says that something has failed. The text has the default colour.
ZETUI_API pixmill::Color GetFailureSurfaceColor();
/// The colour of the line around a section of a window.
ZETUI_API pixmill::Color GetBoxOutlineColor();
/// The radius of the corners of buttons and fields.
ZETUI_API float GetCornerRadius();

} // namespace zetui::skins::utilities

namespace zetui::ui {

class ThemeProvider;
/// Null stands for the current theme.
ZETUI_API const ThemeProvider* GetDefaultThemeProvider();

/// Colour of the outline around a section (`GetColor`).
inline constexpr int kSectionOutlineColor = 324;
/// The classic skin's colours by id; unknown ids give the text colour.
ZETUI_API pixmill::Color GetColor(int id);

/// The toolkit's fonts by size id: 0 normal, 1 titles.
ZETUI_API std::string GetFontName(int sizeId);
/// In pixels.
ZETUI_API float GetFontSize(int sizeId);

} // namespace zetui::ui

namespace zetui::skins::design {

using ColorFlags = unsigned;
struct SkinSet
{};
/// The outline of tables.
inline constexpr int kTableOutline = 2;
ZETUI_API pixmill::Color GetTableColor(const ui::ThemeProvider* theme, ColorFlags flags, int property,
                                       bool selected, const SkinSet& skins);

} // namespace zetui::skins::design
