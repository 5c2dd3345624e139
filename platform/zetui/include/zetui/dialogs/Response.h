#pragma once

namespace zetui::dialogs {

/// How a dialog was closed.
class UI_DialogViewContainer
{
  public:
    using Response = int;
    static constexpr Response kCancel = 0;
    static constexpr Response kOK = 1;
};

} // namespace zetui::dialogs
