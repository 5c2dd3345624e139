#pragma once

#include <memory>

#include <zetui/Export.h>
#include <zetui/nodes/UI_Message.h>
#include <zetui/nodes/UI_SubView.h>

namespace zetui::controls {

/// A node that the user operates. Main thread.
class ZETUI_API UI_ControlView : public ui::UI_SubView
{
  public:
    /// The size of a control's text, in points of the toolkit's default font.
    static float DefaultTextSize();

    /// Called for each complete change, by the user or by `Notify...`; never by a setter. Functions add up.
    void NotifyWhenChanged(ui::MessageFunction function);
    /// Called for each step of a change by the user.
    void NotifyWhenChangedInteractively(ui::MessageFunction function);

  protected:
    explicit UI_ControlView(void* nativeWidget);
    ~UI_ControlView() override;
    void SendChanged(ui::UI_Message& message);
    void SendChangedInteractively(ui::UI_Message& message);

  private:
    struct ControlState;
    std::unique_ptr<ControlState> control;
};

} // namespace zetui::controls
