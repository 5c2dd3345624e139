#pragma once

#include <functional>
#include <memory>
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

namespace zetaudiopluginhostui {

/// The manager dialog in a real window without a screen, on an empty registry and empty lists in a
/// preferences folder of its own. Fill them, then `OpenDialog`.
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
    /// An effect that works.
    Info AddPlugin(const std::wstring& name, const std::wstring& path, const std::wstring& version = L"1.0");
    static PluginLocator Vst(const std::wstring& path);
    static PluginLocator Ban(const std::wstring& path, const std::string& reason = {});
    /// plugin000.so and up, by name.
    void AddManyPlugins(int count);
    static std::vector<std::wstring> VstFolders();

    /// Of the module's archive, or of `archive`. Not yet on the screen.
    void MakeDialog();
    void OpenDialog();
    void CloseDialog();
    /// The window's content gets this size.
    void Resize(int width, int height);
    static void HandleEvents();
    static bool WaitUntil(const std::function<bool()>& condition);

    /// Throws when there is none.
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
    /// True when so many things were shown over the dialog, each of them for its window.
    bool WereShownForTheDialog(std::size_t count) const;
    /// With the mouse, in its middle.
    void Press(const char* id) const;
    static void Press(const zetui::ui::UI_Node& node);
    static void PressAt(const zetui::ui::UI_Node& node, int x, int y);
    QLineEdit& FindBox() const;
    /// With the keyboard, at the end of what is there.
    void TypeIntoFindBox(const std::string& text) const;

    zetui::controls::UI_MultiColumnTree& PluginList() const;
    zetui::controls::UI_MultiColumnTree& FolderList() const;
    /// The texts that the list shows in a column, from the top.
    std::vector<std::wstring> ColumnTexts(unsigned column) const;
    std::vector<std::wstring> Names() const;
    std::vector<std::wstring> Folders() const;
    /// The row with this name; throws when there is none.
    Ptr<Row> RowOf(const std::wstring& name) const;
    /// The widgets of the row with this name; throw when it has none.
    Ptr<zetui::controls::UI_Checkbox> CheckboxOf(const std::wstring& name) const;
    Ptr<zetui::controls::UI_TextButton> ReloadButtonOf(const std::wstring& name) const;
    bool HasReloadButton(const std::wstring& name) const;

    AudioPluginManagerSettings settings;
    /// Null: the module's own archive. Outlives the dialog.
    std::unique_ptr<DialogArchive> archive;
    zetui::utility::IntrusivePtr<PluginManagerDialog> dialog;
    std::unique_ptr<AnsweringPresentation> shown;

  private:
    zettesting::ScopedEnvironment platform{"QT_QPA_PLATFORM", "offscreen"};
};

/// The same in the V7 skin.
class V7DialogFixture : public DialogFixture
{
  protected:
    V7DialogFixture() : DialogFixture(zetui::skins::Skin::V7) {}
};

} // namespace zetaudiopluginhostui
