#pragma once

namespace zetui::ui {

/// A key press. The OS key code of a key that types a character is that character's code in upper case; Tab
/// is 9, Return 13, Escape 27.
class KeyboardEvent
{
  public:
    KeyboardEvent(int osCode, bool shift, bool control, bool alt, void* nativeEvent = nullptr)
        : code(osCode), shiftDown(shift), controlDown(control), altDown(alt), native(nativeEvent)
    {}

    int GetOSCode() const noexcept { return code; }
    bool IsShiftDown() const noexcept { return shiftDown; }
    bool IsControlDown() const noexcept { return controlDown; }
    bool IsAltDown() const noexcept { return altDown; }
    /// The toolkit's own event, which exists while it is being delivered. Only the toolkit uses it.
    void* NativeEvent() const noexcept { return native; }

  private:
    int code;
    bool shiftDown, controlDown, altDown;
    void* native;
};

/// Why the keyboard focus moves.
enum FocusChangeReason : int
{
    kFocusChangeNone = 0,
    kFocusChangeMouse = 1,
    kFocusChangeTab = 2,
    kFocusChangeProgram = 3,
};

} // namespace zetui::ui
