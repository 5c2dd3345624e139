#pragma once

#include <functional>
#include <memory>

#include <zetcore/config/ThrowError.h>
#include <zetui/Export.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetui::ui {

class UI_Node;

/// Something that happened to a control.
class ZETUI_API UI_Message
{
  public:
    explicit UI_Message(UI_Node* sender) noexcept : control(sender) {}
    virtual ~UI_Message();
    /// Not null while the message is delivered.
    UI_Node* GetControl() const noexcept { return control; }

  private:
    UI_Node* control;
};

/// A change that is complete: a button released, a checkbox toggled, a text committed.
class ZETUI_API UI_ControlChangedMessage : public UI_Message
{
  public:
    using UI_Message::UI_Message;
    ~UI_ControlChangedMessage() override;
};

class ZETUI_API UI_ButtonChangedMessage : public UI_ControlChangedMessage
{
  public:
    using UI_ControlChangedMessage::UI_ControlChangedMessage;
    ~UI_ButtonChangedMessage() override;
};

/// A step of a change, such as every character typed.
class ZETUI_API UI_InteractiveControlChangedMessage : public UI_Message
{
  public:
    using UI_Message::UI_Message;
    ~UI_InteractiveControlChangedMessage() override;
};

using MessageFunction = std::shared_ptr<std::function<void(UI_Message*)>>;

/// A shared function that calls the member with the message converted to its class; a message of another
/// class raises the invalid-type-conversion error.
template<typename Object, typename Message>
MessageFunction BindMessageFunction(Object* object, void (Object::*member)(Message*))
{
    return std::make_shared<std::function<void(UI_Message*)>>([object, member](UI_Message* message) {
        auto* const concrete = dynamic_cast<Message*>(message);
        if (!concrete)
            zetcore::config::ThrowInvalidTypeConversion();
        (object->*member)(concrete);
    });
}

/// The same through the object's weak key. Nothing is called once the object is gone, and the object stays
/// alive during the call.
template<typename Object, typename Message>
MessageFunction BindMessageFunctionWeakly(Object* object, void (Object::*member)(Message*))
{
    return std::make_shared<std::function<void(UI_Message*)>>(
        [key = object->GetWeakKey(), call = BindMessageFunction(object, member)](UI_Message* message) {
            if (const auto alive = Object::Lock(key))
                (*call)(message);
        });
}

} // namespace zetui::ui
