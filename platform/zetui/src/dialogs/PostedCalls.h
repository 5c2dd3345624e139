#pragma once

#include <chrono>

namespace zetui::dialogs {

/// Sleeps until something is posted to the main thread, or for as long as given, and runs it. Main thread.
void WaitForPostedCalls(std::chrono::steady_clock::duration atMost);

} // namespace zetui::dialogs
