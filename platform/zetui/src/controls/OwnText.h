#pragma once

#include <QString>
#include <QWidget>

/// The texts of buttons and labels, which the toolkit marks with mnemonics at run time.
namespace zetui::controls {

/// The text in the language of the program, where an archive has brought it.
inline constexpr char kOriginalTextProperty[] = "zetuiOriginalText";

/// The text without the mnemonic that the toolkit has given it.
QString OwnText(const QWidget& widget);
/// Shows the marked text in the place of the widget's own, by which screen readers go on calling it.
void ShowWithMnemonic(QWidget& widget, const QString& marked);
/// Shows the own text again. Does nothing for a text without a mnemonic from the toolkit.
void TakeMnemonicAway(QWidget& widget);

} // namespace zetui::controls
