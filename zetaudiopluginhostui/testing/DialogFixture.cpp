#include "testing/DialogFixture.h"

#include <algorithm>
#include <chrono>
#include <cwchar>
#include <stdexcept>

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QEventLoop>
#include <QLineEdit>
#include <QTest>
#include <zetaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetaudiopluginhostui/Module.h>
#include <zettesting/Patience.h>
#include <zetui/application/Application.h>

#include "dialog/PluginManagerIds.h"
#include "dialog/list/PluginListText.h"
#include "module/ModuleResources.h"

namespace zetaudiopluginhostui {

using zetaudiofilterhost::TechnologyType;

namespace {

void EmptyTheLists()
{
    ResetRegistry(*zetaudiofilterhost::PluginModuleInfoManager::GetInstance());
    ResetBannedPlugins(*zetaudiopluginhost::BannedPluginManager::GetInstance());
    zetaudiofilterhost::AudioFilterDescriptorManager::GetInstance()->SetSynthsEnabled(true);
}

} // namespace

DialogFixture::DialogFixture(zetui::skins::Skin skin)
{
    EmptyTheLists();
    // The same tests run on a window system and in the other skin, too.
    if (qEnvironmentVariableIsSet("ZET_TEST_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", qgetenv("ZET_TEST_PLATFORM"));
    zetui::skins::SetSkin(qgetenv("ZET_TEST_SKIN") == "v7" ? zetui::skins::Skin::V7 : skin);
    zetui::skins::SetScheme(zetui::skins::Scheme::Light);
    EXPECT_TRUE(zetui::ui::InitializeWindows());
    shown = std::make_unique<AnsweringPresentation>();
    Initialize();
}

DialogFixture::~DialogFixture()
{
    CloseDialog();
    Terminate();
    shown.reset();
    zetui::ui::TerminateWindows();
    zetui::skins::SetSkin(zetui::skins::Skin::V7);
    zetui::skins::SetScheme(zetui::skins::Scheme::FollowDesktop);
    EmptyTheLists();
}

DialogFixture::Info DialogFixture::AddPlugin(const std::wstring& name, const std::wstring& path,
                                             const std::wstring& version)
{
    auto info = std::make_shared<zetaudiofilterhost::PluginModuleInfo>(Vst(path));
    info->SetName(name);
    info->SetVersionString(version);
    info->SetHasAnyNonSynthEffect(true);
    TheRegistry().AddModule(info);
    return info;
}

DialogFixture::PluginLocator DialogFixture::Vst(const std::wstring& path)
{
    return {TechnologyType::VST, path};
}

DialogFixture::PluginLocator DialogFixture::Ban(const std::wstring& path, const std::string& reason)
{
    TheBanned().AddBannedPlugin(Vst(path), reason);
    return Vst(path);
}

void DialogFixture::AddManyPlugins(int count)
{
    for (int i = 0; i < count; ++i) {
        wchar_t name[32];
        std::swprintf(name, std::size(name), L"plugin%03d", i);
        AddPlugin(name, std::wstring(L"/plugins/") + name + L".so");
    }
}

std::vector<std::wstring> DialogFixture::VstFolders()
{
    const auto technology = TheRegistry().GetPluginTechnology(TechnologyType::VST);
    return {technology->DirectoryBegin(), technology->DirectoryEnd()};
}

void DialogFixture::MakeDialog()
{
    const zetui::utility::ResourceManager* resources = GetModuleResources();
    if (archive)
        resources = archive.get();
    dialog = zetui::utility::MakeIntrusive<PluginManagerDialog>(nullptr, resources, settings, nullptr);
}

void DialogFixture::OpenDialog()
{
    MakeDialog();
    dialog->UI_Show(true);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Window(), zettesting::patienceInMilliseconds));
    HandleEvents();
}

void DialogFixture::CloseDialog()
{
    dialog = nullptr;
    HandleEvents();
}

void DialogFixture::Resize(int width, int height)
{
    Window().resize(width, height);
    HandleEvents();
}

void DialogFixture::HandleEvents()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

bool DialogFixture::WaitUntil(const std::function<bool()>& condition)
{
    return zettesting::Becomes(condition, [] { QCoreApplication::processEvents(QEventLoop::AllEvents, 10); });
}

PluginManagerDialog& DialogFixture::TheDialog() const
{
    if (!dialog)
        throw std::runtime_error("there is no dialog");
    return *dialog;
}

QWidget& DialogFixture::WidgetOf(const zetui::ui::UI_Node& node)
{
    auto* const widget = static_cast<QWidget*>(node.NativeWidget());
    if (!widget)
        throw std::runtime_error("the control has no widget");
    return *widget;
}

QWidget& DialogFixture::Window() const
{
    return *WidgetOf(*TheDialog().GetRootView()).window();
}

bool DialogFixture::WereShownForTheDialog(std::size_t count) const
{
    const HWND window = TheDialog().GetNativeWindow();
    return window && shown->parents.size() == count &&
           std::all_of(shown->parents.begin(), shown->parents.end(),
                       [window](const auto& parent) { return parent.Native() == window; });
}

void DialogFixture::Press(const char* id) const
{
    Press(Node<zetui::ui::UI_Node>(id));
}

void DialogFixture::Press(const zetui::ui::UI_Node& node)
{
    const QPoint middle = WidgetOf(node).rect().center();
    PressAt(node, middle.x(), middle.y());
}

void DialogFixture::PressAt(const zetui::ui::UI_Node& node, int x, int y)
{
    QTest::mouseClick(&WidgetOf(node), Qt::LeftButton, {}, QPoint(x, y));
    HandleEvents();
}

QLineEdit& DialogFixture::FindBox() const
{
    return dynamic_cast<QLineEdit&>(WidgetOf(Node<zetui::ui::UI_Node>(ids::kFindTextEdit)));
}

void DialogFixture::TypeIntoFindBox(const std::string& text) const
{
    FindBox().setFocus();
    QTest::keyClicks(&FindBox(), QString::fromStdString(text));
    HandleEvents();
}

zetui::controls::UI_MultiColumnTree& DialogFixture::PluginList() const
{
    return Node<PluginMultiColumnTree>(ids::kPluginList);
}

zetui::controls::UI_MultiColumnTree& DialogFixture::FolderList() const
{
    return Node<zetui::controls::UI_MultiColumnTree>(ids::kDirectoryList);
}

namespace {

std::vector<std::wstring> TextsOf(const QAbstractItemView& view, int column)
{
    std::vector<std::wstring> texts;
    const QAbstractItemModel& model = *view.model();
    for (int row = 0; row < model.rowCount(); ++row)
        texts.push_back(model.index(row, column).data().toString().toStdWString());
    return texts;
}

} // namespace

std::vector<std::wstring> DialogFixture::ColumnTexts(unsigned column) const
{
    PluginList().GetRowCount();
    return TextsOf(dynamic_cast<QAbstractItemView&>(WidgetOf(PluginList())), static_cast<int>(column) - 1);
}

std::vector<std::wstring> DialogFixture::Names() const
{
    return ColumnTexts(kColumnName);
}

std::vector<std::wstring> DialogFixture::Folders() const
{
    FolderList().GetRowCount();
    return TextsOf(dynamic_cast<QAbstractItemView&>(WidgetOf(FolderList())), 0);
}

DialogFixture::Ptr<DialogFixture::Row> DialogFixture::RowOf(const std::wstring& name) const
{
    const std::vector<std::wstring> names = Names();
    for (std::size_t place = 0; place < names.size(); ++place) {
        if (names[place] == name)
            return PluginList().GetRowAt(static_cast<int>(place));
    }
    throw std::runtime_error("no such row");
}

namespace {

template<typename Control>
zetui::utility::IntrusivePtr<Control> WidgetIn(zetui::controls::UI_MultiColumnTreeRow& row, int cell)
{
    const auto view = row.GetCellView(cell);
    if (!view)
        throw std::runtime_error("the row has no such cell");
    return dynamic_cast<Control*>(view->GetChild(0).get());
}

} // namespace

DialogFixture::Ptr<zetui::controls::UI_Checkbox> DialogFixture::CheckboxOf(const std::wstring& name) const
{
    auto checkbox = WidgetIn<zetui::controls::UI_Checkbox>(*RowOf(name), kEnabledCell);
    if (!checkbox)
        throw std::runtime_error("the row has no checkbox");
    return checkbox;
}

DialogFixture::Ptr<zetui::controls::UI_TextButton>
DialogFixture::ReloadButtonOf(const std::wstring& name) const
{
    auto button = WidgetIn<zetui::controls::UI_TextButton>(*RowOf(name), kStatusCell);
    if (!button)
        throw std::runtime_error("the row has no Reload button");
    return button;
}

bool DialogFixture::HasReloadButton(const std::wstring& name) const
{
    return static_cast<bool>(WidgetIn<zetui::controls::UI_TextButton>(*RowOf(name), kStatusCell));
}

} // namespace zetaudiopluginhostui
