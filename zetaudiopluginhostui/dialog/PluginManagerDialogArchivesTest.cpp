// The manager dialog with layout archives of a host's own, which lack something.
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <zetcore/config/ThrowError.h>
#include <zetui/controls/UI_StaticText.h>
#include <zetui/utility/OS_ResourceManager.h>

#include "dialog/PluginManagerIds.h"
#include "module/ModuleResources.h"
#include "testing/ArchiveModule.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

class DialogOfAnotherArchive : public DialogFixture
{
  protected:
    ~DialogOfAnotherArchive() override { CloseDialog(); }
    void Make(const std::string& archive)
    {
        module = std::make_unique<ArchiveModule>(archive);
        resources = std::make_unique<zetui::utility::OS_ResourceManager>(module->Handle());
        dialog =
            zetui::utility::MakeIntrusive<PluginManagerDialog>(nullptr, resources.get(), settings, nullptr);
    }

  private:
    std::unique_ptr<ArchiveModule> module;
    std::unique_ptr<zetui::utility::OS_ResourceManager> resources;
};

TEST_F(DialogOfAnotherArchive, OpensWithoutWhatIsOptional)
{
    AddPlugin(L"One", L"/a/1.so");
    Ban(L"/a/bad.so");
    settings.rescanExisting = true;
    settings.sortColumn = 3;
    Make("OnlyOptions");
    dialog->UI_Show(true);
    HandleEvents();
    EXPECT_TRUE(Node<zetui::controls::UI_Checkbox>(ids::kRescanExisting).IsChecked());
    EXPECT_FALSE(dialog->GetNodeForID(ids::kPluginList));
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({L"/somewhere"});
    TheRegistry().GetPluginInfosChangedSignal()();
    Resize(700, 600);
    EXPECT_FALSE(dialog->UI_DoPreKeyboardEvent(nullptr, zetui::ui::KeyboardEvent(9, false, false, false)));
    CloseDialog();
    EXPECT_TRUE(settings.rescanExisting);
    EXPECT_EQ(settings.sortColumn, 3u) << "without a list, the saved sort stays";
}

TEST_F(DialogOfAnotherArchive, NeedsBothOptionCheckboxes)
{
    for (const char* const archive : {"WithoutSeparateProcess", "SeparateProcessIsAButton"}) {
        try {
            Make(archive);
            ADD_FAILURE() << archive << ": no error";
        } catch (const zetcore::config::error& error) {
            EXPECT_EQ(std::string(error.what()), "Invalid type conversion.") << archive;
            EXPECT_EQ(error.Level(), 1) << archive;
        }
        HandleEvents();
    }
    EXPECT_FALSE(settings.rescanExisting);
}

} // namespace
} // namespace zetaudiopluginhostui
