#include <zetui/nodes/UI_Message.h>

namespace zetui::ui {

UI_Message::~UI_Message() = default;

UI_ControlChangedMessage::~UI_ControlChangedMessage() = default;

UI_ButtonChangedMessage::~UI_ButtonChangedMessage() = default;

UI_InteractiveControlChangedMessage::~UI_InteractiveControlChangedMessage() = default;

} // namespace zetui::ui
