#include "testing/ManageFixture.h"

#include <sstream>
#include <utility>

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/threads/MainThread.h>

#include "commands/CommandLine.h"

namespace zetaudiopluginmanager {

ManageFixture::ManageFixture()
{
    ForgetAll();
}

ManageFixture::~ManageFixture()
{
    ForgetAll();
    zetui::skins::SetSkin(skinBefore);
    zetcore::config::Localizer::Get().Reset();
}

int ManageFixture::Run(Arguments arguments, User user)
{
    ForgetAll();
    UserActs(std::move(user));
    arguments.insert(arguments.begin(), {"--prefs", prefs.string()});
    std::ostringstream output;
    const int status = RunCommandLine(arguments, output);
    EXPECT_EQ(output.str(), "");
    return status;
}

// It posts itself again until the window is there.
void ManageFixture::UserActs(User user, const QWidget* past)
{
    zetcore::threads::AsyncCallFromMainThread(
        [user = std::move(user), past]() mutable {
            QWidget* const window = QApplication::activeModalWidget();
            if (window && window != past && window->isVisible())
                user(*window);
            else
                UserActs(std::move(user), past);
        },
        0);
}

void ManageFixture::Cancel(QWidget& window)
{
    QTest::keyClick(&window, Qt::Key_Escape);
}

void ManageFixture::ForgetAll()
{
    ResetRegistry(*zetaudiofilterhost::PluginModuleInfoManager::GetInstance());
    ResetBannedPlugins(*zetaudiopluginhost::BannedPluginManager::GetInstance());
}

} // namespace zetaudiopluginmanager
