#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QWidget>
#include <zettesting/HostFixture.h>
#include <zetui/skins/Skins.h>

namespace zetaudiopluginmanager {

/// Runs the program's commands in this process, with windows that nobody sees, and a user who acts in
/// whatever window is open.
class ManageFixture : public zettesting::HostFixture
{
  protected:
    using Arguments = std::vector<std::string>;
    using User = std::function<void(QWidget&)>;

    ManageFixture();
    ~ManageFixture() override;

    /// Returns the exit status. Expects that nothing is written to the output.
    int Run(Arguments arguments, User user);
    /// Lets the user act when a modal window is there, another than `past`.
    static void UserActs(User user, const QWidget* past = nullptr);
    static void Cancel(QWidget& window);

  private:
    static void ForgetAll();

    const zettesting::ScopedEnvironment platform{"QT_QPA_PLATFORM", "offscreen"};
    const zetui::skins::Skin skinBefore = zetui::skins::GetSkin();
};

} // namespace zetaudiopluginmanager
