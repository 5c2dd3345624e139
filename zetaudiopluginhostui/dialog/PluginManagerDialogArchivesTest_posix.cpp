// The manager dialog with layout archives of a host's own, which lack something.
#include <memory>
#include <stdexcept>
#include <string>

#include <dlfcn.h>

#include <gtest/gtest.h>
#include <zetcore/config/ThrowError.h>
#include <zetcore/filesupport/CommonDirs.h>
#include <zetcore/string/Utf.h>
#include <zetui/controls/UI_StaticText.h>
#include <zetui/utility/OS_ResourceManager.h>

#include "dialog/PluginManagerIds.h"
#include "module/ModuleResources.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

class DialogOfAnotherArchive : public DialogFixture
{
  protected:
    ~DialogOfAnotherArchive() override { CloseDialog(); }
    void Make(const std::string& archive)
    {
        const auto bin = zetcore::filesupport::commondirs::ExecutableDir().FullPath();
        const std::string path =
            zetcore::string::UTF16to8(bin) + "/libzettestarchive" + archive + ZET_TEST_MODULE_SUFFIX;
        module = Module(::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL), &::dlclose);
        void* const table = module ? ::dlsym(module.get(), "zetModuleResources") : nullptr;
        if (!table)
            throw std::runtime_error("no such module: " + path);
        resources = std::make_unique<zetui::utility::OS_ResourceManager>(table);
        dialog =
            zetui::utility::MakeIntrusive<PluginManagerDialog>(nullptr, resources.get(), settings, nullptr);
    }

  private:
    using Module = std::unique_ptr<void, int (*)(void*)>;
    Module module{nullptr, &::dlclose};
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
