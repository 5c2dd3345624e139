#pragma once

namespace zetui::ui {

/// The OS key codes of keys that type no letter. Where no character stands for a key, its code is a number
/// that no character has.
enum KeyCode : int
{
    kTabKey = 9,
    kReturnKey = 13,
    kEscapeKey = 27,
    kDownKey = 0x1000015,
    kF5Key = 0x1000034,
};

/// A key press. The OS key code of a key that types a character is that character's code in upper case.
class KeyboardEvent
{
  public:
    KeyboardEvent(int osCode, bool shift, bool control, bool alt, void* nativeEvent = nullptr,
                  bool repeats = false)
        : code(osCode), shiftDown(shift), controlDown(control), altDown(alt), repeated(repeats),
          native(nativeEvent)
    {}

    int GetOSCode() const noexcept { return code; }
    bool IsShiftDown() const noexcept { return shiftDown; }
    bool IsControlDown() const noexcept { return controlDown; }
    bool IsAltDown() const noexcept { return altDown; }
    /// True for the presses that follow the first one while the user keeps the key down.
    bool IsRepeated() const noexcept { return repeated; }
    /// True when the key is pressed alone, without Shift, Control and Alt.
    bool IsPlain(int osCode) const noexcept
    {
        return code == osCode && !shiftDown && !controlDown && !altDown;
    }
    /// The toolkit's own event, which exists while it is being delivered. Only the toolkit uses it.
    void* NativeEvent() const noexcept { return native; }

  private:
    int code;
    bool shiftDown, controlDown, altDown, repeated;
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
