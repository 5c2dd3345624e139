#include <zetui/dialogs/UI_Dialog.h>

#include <utility>

namespace zetui::dialogs {

OS_Window::~OS_Window() = default;

OS_Dialog::~OS_Dialog() = default;

UI_Dialog::~UI_Dialog() = default;

void UI_Dialog::SetPostCloseCallback(PostCloseCallback callback)
{
    postClose = std::move(callback);
}

bool UI_Dialog::CallPostClose(Response response)
{
    // The callback is copied, because it may set another one.
    const PostCloseCallback callback = postClose;
    return callback && callback(response);
}

} // namespace zetui::dialogs
