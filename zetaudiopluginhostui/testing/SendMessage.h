#pragma once

#include <zetui/controls/UI_ControlView.h>

namespace zetaudiopluginhostui {

/// Sends a control's message as the control does, whatever the message says. Exceptions that leave a handler
/// come back.
class SendMessage : private zetui::controls::UI_ControlView
{
  public:
    SendMessage() = delete;
    static void Changed(UI_ControlView& control, zetui::ui::UI_Message& message)
    {
        (control.*&SendMessage::SendChanged)(message);
    }
};

} // namespace zetaudiopluginhostui
