#pragma once

class QWidget;

/// The steps of scenes find and work the windows that are open with these. Main thread.
namespace screenshots {

/// The modal window in front; null while there is none.
QWidget* Modal();
/// A control by its name in the layout archive; null while the window in front does not have it.
QWidget* Control(const char* id);
bool IsManager();
bool IsProgress();
bool IsAlert();
/// False while there is no such control, or it is disabled.
bool Click(const char* id);
/// Presses the key, and returns true.
bool PressEscape();

} // namespace screenshots
