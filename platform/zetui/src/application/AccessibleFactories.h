#pragma once

#include <QAccessible>

namespace zetui::ui {

/// From now on, screen readers see widgets as the function describes them. Calling it again does nothing.
/// Main thread.
void UseAccessibleFactory(QAccessible::InterfaceFactory factory);
/// Takes all of these functions out, since the toolkit may be unloaded while the host's application lives on.
void ForgetAccessibleFactories();

} // namespace zetui::ui
