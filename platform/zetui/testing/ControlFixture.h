#pragma once

#include <functional>
#include <memory>

#include <QTest>

#include <zettesting/Patience.h>
#include <zetui/controls/UI_ControlView.h>

#include "nodes/NodeAccess.h"
#include "testing/WindowsFixture.h"

namespace zetui {

/// Controls below each other in an open window.
class ControlFixture : public WindowsFixture
{
  protected:
    template<typename Control, typename... Arguments>
    utility::IntrusivePtr<Control> Open(Arguments&&... arguments)
    {
        const auto control = utility::MakeIntrusive<Control>(std::forward<Arguments>(arguments)...);
        control->UI_SetLocalRectF({10, static_cast<float>(10 + 40 * count++), 200, 24});
        ui::NodeAccess::Embed(control.get(), &window, nullptr);
        window.resize(300, 200);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window, zettesting::patienceInMilliseconds));
        return control;
    }
    static ui::MessageFunction Do(std::function<void(ui::UI_Message*)> function)
    {
        return std::make_shared<std::function<void(ui::UI_Message*)>>(std::move(function));
    }

    QWidget window;

  private:
    int count = 0;
};

} // namespace zetui
