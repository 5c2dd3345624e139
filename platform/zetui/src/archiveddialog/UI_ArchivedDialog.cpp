#include <zetui/archiveddialog/UI_ArchivedDialog.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <QCoreApplication>
#include <QEventLoop>
#include <QPushButton>
#include <QTimer>

#include <zetcore/threads/MainThread.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/archiveddialog/ControlStore.h>
#include <zetui/archives/NodeArchive.h>

#include "application/HandlerErrors.h"
#include "archiveddialog/ArchivedDialogState.h"
#include "archiveddialog/DialogWindow.h"
#include "nodes/NodeAccess.h"
#include "screen/DialogPlace.h"
#include "screen/ParentWindow.h"
#include "skins/SkinRecord.h"

namespace zetui::ui {

namespace {

/// The limit keeps a modal phase from being held up by calls that go on posting others.
constexpr std::chrono::milliseconds postedCallsLimit{50};

/// On Windows, the request to end a loop gets lost when events are handled within the handler that made it.
/// The request is repeated until the loop is gone. The loop owns the timer.
void EndLoop(QEventLoop& loop)
{
    constexpr std::chrono::milliseconds interval{10};
    loop.quit();
    auto* const again = new QTimer(&loop);
    QObject::connect(again, &QTimer::timeout, &loop, &QEventLoop::quit);
    again->start(interval);
}

utility::IntrusivePtr<UI_SubView> LoadRoot(const utility::ResourceManager* resources,
                                           const std::string& archiveName, const NodeFactory& factory)
{
    if (!resources)
        zetcore::utility::DoThrowNullPtrException("ResourceManager");
    const std::string name = ResourceOfArchive(archiveName);
    const std::vector<unsigned char> bytes = resources->LoadResource(name, "xml");
    if (bytes.empty())
        throw archive_error("Layout archive \"" + name + "\": there is no such resource");
    const std::string xml(bytes.begin(), bytes.end());
    return LoadNodeArchive(xml, name, factory);
}

} // namespace

std::string ResourceOfArchive(std::string archiveName)
{
    std::transform(archiveName.begin(), archiveName.end(), archiveName.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return archiveName.append(skins::CurrentSkin().archiveSuffix);
}

UI_ArchivedDialog::UI_ArchivedDialog(const pixmill::SupplierInterface* supplier,
                                     const utility::ResourceManager* resources,
                                     const std::string& archiveName, const std::wstring& title,
                                     WindowVariant parent, bool resizable, bool hasTitleBar, PointF origin,
                                     NodeFactory factory, bool modeless, DialogFlags)
    : archived(std::make_unique<ArchivedState>(archiveName))
{
    NodeAccess::RequireWindows();
    archived->supplier = supplier;
    archived->parent = parent;
    archived->factory = std::move(factory);
    archived->modeless = modeless;
    archived->resizable = resizable;
    archived->root = LoadRoot(resources, archiveName, archived->factory);
    archived->MakeWindow(title, hasTitleBar, origin);
    archived->GiveMnemonics();
    archived->FitToTexts();
    archived->window->confirmed = [this] {
        if (archived->okButton)
            archived->okButton->Click();
    };
    archived->window->cancelled = [this] {
        if (archived->cancelButton)
            archived->cancelButton->Click();
        else
            Close(dialogs::UI_DialogViewContainer::kCancel);
    };
    archived->window->sizeChanged = [this] { ReportSize(); };
}

UI_ArchivedDialog::~UI_ArchivedDialog()
{
    archived->Hide();
    archived->root = nullptr;
    if (DialogWindow* const window = archived->window) {
        window->confirmed = window->cancelled = window->sizeChanged = nullptr;
        window->deleteLater();
    }
}

utility::IntrusivePtr<UI_Node> UI_ArchivedDialog::GetNodeForID(const std::string& id) const
{
    zetcore::threads::AssertMainThread();
    return archived->root->FindNodeForID(id);
}

UI_SubView* UI_ArchivedDialog::GetRootView() const noexcept
{
    return archived->root.get();
}

const pixmill::SupplierInterface* UI_ArchivedDialog::GetSupplier() const noexcept
{
    return archived->supplier;
}

HWND UI_ArchivedDialog::GetNativeWindow() const
{
    return archived->window ? reinterpret_cast<HWND>(archived->window->winId()) : nullptr;
}

void UI_ArchivedDialog::SetOkButton(const utility::IntrusivePtr<controls::UI_TextButton>& button)
{
    archived->okButton = button;
    CloseWhenPressed(button, dialogs::UI_DialogViewContainer::kOK);
    // This changes its look only. The window handles Return.
    if (auto* const widget = button ? qobject_cast<QPushButton*>(WidgetOf(button.get())) : nullptr)
        widget->setDefault(true);
    archived->GiveMnemonics();
}

void UI_ArchivedDialog::SetCancelButton(const utility::IntrusivePtr<controls::UI_TextButton>& button)
{
    archived->cancelButton = button;
    CloseWhenPressed(button, dialogs::UI_DialogViewContainer::kCancel);
    archived->GiveMnemonics();
}

void UI_ArchivedDialog::FitToTexts()
{
    if (archived->window)
        archived->FitToTexts();
}

void UI_ArchivedDialog::CloseWhenPressed(const utility::IntrusivePtr<controls::UI_TextButton>& button,
                                         Response response)
{
    if (!button)
        return;
    button->NotifyWhenChanged(std::make_shared<std::function<void(UI_Message*)>>(
        [key = GetWeakKey(), response](UI_Message* message) {
            const auto alive = Lock(key);
            auto* const dialog = static_cast<UI_ArchivedDialog*>(alive.get());
            if (!dialog)
                return;
            // Another button may have taken its place since.
            const auto& state = *dialog->archived;
            const UI_Node* const current = response == dialogs::UI_DialogViewContainer::kOK
                                               ? state.okButton.get()
                                               : state.cancelButton.get();
            if (message->GetControl() == current)
                dialog->Close(response);
        }));
}

void UI_ArchivedDialog::SetMinimumSize(float width, float height)
{
    if (archived->window && archived->resizable)
        archived->window->setMinimumSize(static_cast<int>(std::ceil(width)),
                                         static_cast<int>(std::ceil(height)));
}

void UI_ArchivedDialog::UI_SetGlobalStructureRect(const RectI& rect, bool keepOnScreen)
{
    zetcore::threads::AssertMainThread();
    if (!archived->window || rect.width <= 0 || rect.height <= 0)
        return;
    const QSize size = QSize(rect.width, rect.height)
                           .boundedTo(archived->window->maximumSize())
                           .expandedTo(archived->window->minimumSize());
    const RectI wanted{rect.left, rect.top, size.width(), size.height()};
    archived->window->setGeometry(keepOnScreen ? OnScreen(wanted)
                                               : QRect(QPoint(wanted.left, wanted.top), size));
    archived->placed = true;
    ReportSize();
}

UI_ArchivedDialog::RectI UI_ArchivedDialog::UI_GetGlobalStructureRect() const
{
    if (!archived->window)
        return {};
    // A store remembers that the window is maximised, and its place when it is not is remembered here.
    const bool asItIs = !archived->window->isMaximized() || !GetControlStore();
    const QRect rect = asItIs ? archived->window->geometry() : archived->window->normalGeometry();
    return {rect.left(), rect.top(), rect.width(), rect.height()};
}

void UI_ArchivedDialog::SetFirstFocusNode(const utility::IntrusivePtr<UI_Node>& node)
{
    archived->firstFocus = node;
}

utility::IntrusivePtr<UI_Node> UI_ArchivedDialog::GetFirstFocusNode() const
{
    if (archived->firstFocus || !archived->window)
        return archived->firstFocus;
    for (const QWidget* const widget : ReadingOrder(*archived->window)) {
        if (widget->isEnabledTo(archived->window) && widget->isVisibleTo(archived->window))
            return NodeAccess::NodeOf(widget);
    }
    return nullptr;
}

void UI_ArchivedDialog::Close(Response response)
{
    if (!UI_IsShown() || archived->closedWith)
        return;
    archived->closedWith = response;
    archived->result = response;
    if (archived->loop)
        EndLoop(*archived->loop);
    else
        FinishClosing();
}

void UI_ArchivedDialog::FinishClosing()
{
    const utility::IntrusivePtr<UI_ArchivedDialog> kept(this);
    archived->Hide();
    if (const std::optional<Response> response = std::exchange(archived->closedWith, std::nullopt))
        CallPostClose(*response);
}

UI_ArchivedDialog::Response UI_ArchivedDialog::GetResult() const noexcept
{
    return archived->result;
}

void UI_ArchivedDialog::UI_Show(bool show)
{
    if (!archived->window)
        return;
    if (show)
        archived->Show();
    else
        archived->Hide();
}

bool UI_ArchivedDialog::UI_IsShown() const
{
    return archived->window && archived->window->isVisible();
}

void UI_ArchivedDialog::BeginModal()
{
    zetcore::threads::AssertMainThread();
    if (!archived->window)
        return;
    archived->closedWith.reset();
    archived->result = dialogs::UI_DialogViewContainer::kCancel;
    if (!archived->modeless && !UI_IsShown())
        archived->window->setWindowModality(Qt::ApplicationModal);
    if (!archived->modeless && !archived->parentLock)
        archived->parentLock = std::make_unique<ParentWindowLock>(*archived->window, archived->parent);
    // The focus is set before the window is shown, because Qt would choose by itself then.
    if (!archived->window->focusWidget()) {
        if (const utility::IntrusivePtr<UI_Node> first = GetFirstFocusNode())
            first->UI_GainKeyboardFocus(kFocusChangeProgram);
    }
    archived->Show();
}

void UI_ArchivedDialog::EndModal()
{
    zetcore::threads::AssertMainThread();
    FinishClosing();
}

void UI_ArchivedDialog::ModalDuring()
{
    zetcore::threads::AssertMainThread();
    const utility::IntrusivePtr<UI_ArchivedDialog> kept(this);
    HandlerErrors errors;
    zetcore::threads::RunQueuedCalls(std::chrono::steady_clock::now() + postedCallsLimit);
    QCoreApplication::processEvents();
    errors.Rethrow();
}

void UI_ArchivedDialog::PostClose()
{
    zetcore::threads::AssertMainThread();
    Close(dialogs::UI_DialogViewContainer::kOK);
}

UI_ArchivedDialog::Response UI_ArchivedDialog::RunModal()
{
    zetcore::threads::AssertMainThread();
    if (archived->loop)
        throw std::logic_error("The dialog runs already");
    const utility::IntrusivePtr<UI_ArchivedDialog> kept(this);
    QEventLoop loop;
    HandlerErrors errors([&loop] { EndLoop(loop); });
    BeginModal();
    // A loop cannot be ended before it runs.
    if (UI_IsShown() && !errors.HasAny()) {
        archived->loop = &loop;
        // The window may be deleted with its parent.
        QObject::connect(archived->window, &QObject::destroyed, &loop, &QEventLoop::quit);
        loop.exec(QEventLoop::DialogExec);
        archived->loop = nullptr;
    }
    FinishClosing();
    errors.Rethrow();
    return archived->result;
}

void UI_ArchivedDialog::UI_SizeChanged(const RectF& bounds)
{
    NodeAccess::SetFrameByLayout(archived->root.get(), {0, 0, bounds.width, bounds.height});
    NodeAccess::MakeWayBelow(archived->root.get());
}

void UI_ArchivedDialog::ReportSize()
{
    const QSize size = archived->window ? archived->window->size() : archived->reportedSize;
    if (size == archived->reportedSize)
        return;
    archived->reportedSize = size;
    UI_SizeChanged({0, 0, static_cast<float>(size.width()), static_cast<float>(size.height())});
}

bool UI_ArchivedDialog::UI_DoPreKeyboardEvent(UI_Node*, const KeyboardEvent&)
{
    return false;
}

} // namespace zetui::ui
