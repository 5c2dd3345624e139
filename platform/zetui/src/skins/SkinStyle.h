#pragma once

#include <memory>

class QApplication;
class QIcon;
class QPalette;
class QStyle;
class QWidget;

#include "skins/SkinRecord.h"

/// Puts the skins on the windows. Main thread.
namespace zetui::skins {

/// Dynamic properties of a `QPushButton`, for skins in which archives say how buttons look: a `ButtonVariant`
/// as int, and a bool.
inline constexpr char kVariantProperty[] = "zetVariant";
inline constexpr char kQuietProperty[] = "zetQuiet";

/// Gives an application that is ours the chosen skin: style, palette, font. From then on it follows
/// `SetSkin`, `SetScheme` and the desktop's palette.
void ApplySkin(QApplication& application);
/// Gives the application its own look back. Does nothing when it has none of our skins.
void RemoveSkin();
/// Puts the skin on one window, with what is in it now and later, inside an application of another look. Does
/// nothing where the application has the skin already.
void DressWindow(QWidget& window);

QPalette MakePalette(const SkinColors& colors);
std::unique_ptr<QStyle> MakeStyle(const SkinRecord& skin);

/// Called by `SetSkin` and `SetScheme`.
void SkinChanged();
/// True when the desktop asked for dark before our palette was set; false without an application.
bool DesktopIsDark();

} // namespace zetui::skins
