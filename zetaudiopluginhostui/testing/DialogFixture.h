#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <QWidget>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginManagerSettings.h>
#include <zettesting/HostFixture.h>
#include <zetui/skins/Skins.h>

#include "dialog/PluginManagerDialog.h"
#include "testing/AnsweringPresentation.h"
#include "testing/DialogArchive.h"

class QAbstractItemView;
class QLineEdit;

namespace zetui::skins {

/// Names the skin in the output of tests.
inline void PrintTo(Skin skin, std::ostream* output)
{
    *output << (skin == Skin::Classic ? "Classic" : "V7");
}

} // namespace zetui::skins

namespace zetaudiopluginhostui {

/// The manager dialog in a real window that needs no screen. The registry and the lists are empty and have a
/// preferences folder of their own. Fill them, then call `OpenDialog`.
class DialogFixture : public zettesting::HostFixture
{
  protected:
    using Registry = zetaudiofilterhost::PluginModuleInfoManager;
    using Banned = zetaudiopluginhost::BannedPluginManager;
    using PluginLocator = zetaudiofilterhost::PluginLocator;
    using Info = std::shared_ptr<zetaudiofilterhost::PluginModuleInfo>;
    using Row = zetui::controls::UI_MultiColumnTreeRow;
    template<typename T>
    using Ptr = zetui::utility::IntrusivePtr<T>;

    explicit DialogFixture(zetui::skins::Skin skin = zetui::skins::Skin::Classic);
    ~DialogFixture() override;

    static Registry& TheRegistry() { return *Registry::GetInstance(); }
    static Banned& TheBanned() { return *Banned::GetInstance(); }
    /// Adds an effect that works.
    Info AddPlugin(const std::wstring& name, const std::wstring& path, const std::wstring& version = L"1.0");
    static PluginLocator Vst(const std::wstring& path);
    static PluginLocator Ban(const std::wstring& path, const std::string& reason = {});
    /// Adds plugin000.so, plugin001.so and so on.
    void AddManyPlugins(int count);
    static std::vector<std::wstring> VstFolders();

    /// Makes the dialog from the module's archive, or from `archive`, and does not show it yet.
    void MakeDialog();
    void OpenDialog();
    void CloseDialog();
    /// Gives the window's content this size.
    void Resize(int width, int height);
    static void HandleEvents();
    static bool WaitUntil(const std::function<bool()>& condition);

    /// Throws when no dialog is open.
    PluginManagerDialog& TheDialog() const;
    /// Throws when there is no such control.
    template<typename T>
    T& Node(const char* id) const
    {
        auto* const node = dynamic_cast<T*>(TheDialog().GetNodeForID(id).get());
        if (!node)
            throw std::runtime_error(std::string("no such control: ") + id);
        return *node;
    }
    static QWidget& WidgetOf(const zetui::ui::UI_Node& node);
    QWidget& Window() const;
    /// True when exactly this many windows were shown, each of them as a child of the dialog's window.
    bool WereShownForTheDialog(std::size_t count) const;
    /// Clicks with the mouse into the middle of the control.
    void Press(const char* id) const;
    static void Press(const zetui::ui::UI_Node& node);
    static void PressAt(const zetui::ui::UI_Node& node, int x, int y);
    QLineEdit& FindBox() const;
    /// Types at the end of the text that is there.
    void TypeIntoFindBox(const std::string& text) const;

    zetui::controls::UI_MultiColumnTree& PluginList() const;
    zetui::controls::UI_MultiColumnTree& FolderList() const;
    /// The texts that the list shows in a column, from the top.
    std::vector<std::wstring> ColumnTexts(unsigned column) const;
    std::vector<std::wstring> Names() const;
    std::vector<std::wstring> Folders() const;
    /// The row with this name. Throws when there is none.
    Ptr<Row> RowOf(const std::wstring& name) const;
    /// The widgets of the row with this name. They throw when it has none.
    Ptr<zetui::controls::UI_Checkbox> CheckboxOf(const std::wstring& name) const;
    Ptr<zetui::controls::UI_TextButton> ReloadButtonOf(const std::wstring& name) const;
    bool HasReloadButton(const std::wstring& name) const;

    AudioPluginManagerSettings settings;
    /// Null for the module's own archive. It outlives the dialog.
    std::unique_ptr<DialogArchive> archive;
    zetui::utility::IntrusivePtr<PluginManagerDialog> dialog;
    std::unique_ptr<AnsweringPresentation> shown;

  private:
    zettesting::ScopedEnvironment platform{"QT_QPA_PLATFORM", "offscreen"};
    /// The file manager of the tester's own desktop is none of the tests' business.
    zettesting::ScopedEnvironment noBus{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus"};
};

/// The dialog in the V7 skin.
class V7DialogFixture : public DialogFixture
{
  protected:
    V7DialogFixture() : DialogFixture(zetui::skins::Skin::V7) {}
};

} // namespace zetaudiopluginhostui
