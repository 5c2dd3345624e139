#pragma once

#include <zetui/nodes/UI_SubView.h>

namespace zetaudiopluginhostui {

/// A section of the dialog, with a line around it.
class BoxView : public zetui::ui::UI_SubView
{
  public:
    void UI_Draw(zetui::pixmill::Pixmill* context) override;

  protected:
    ~BoxView() override;
};

} // namespace zetaudiopluginhostui
