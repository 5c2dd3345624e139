#include "archiveddialog/ArchivedDialogState.h"

#include <cmath>
#include <utility>

#include "archiveddialog/Mnemonics.h"
#include "archiveddialog/RoomForTexts.h"
#include "nodes/NodeAccess.h"
#include "pixmill/QtConversions.h"
#include "screen/DialogPlace.h"
#include "screen/ParentWindow.h"
#include "skins/SkinStyle.h"

namespace zetui::ui {

UI_ArchivedDialog::ArchivedState::ArchivedState(const std::string& archiveName) : remembered(archiveName) {}

UI_ArchivedDialog::ArchivedState::~ArchivedState() = default;

void UI_ArchivedDialog::ArchivedState::MakeWindow(const std::wstring& title, bool hasTitleBar, PointF origin)
{
    window = new DialogWindow(FindParentWidget(parent));
    window->setWindowTitle(pixmill::ToQString(title));
    window->setWindowFlag(Qt::FramelessWindowHint, !hasTitleBar);
    window->setWindowFlag(Qt::WindowMaximizeButtonHint, resizable && hasTitleBar);
    NodeAccess::SetSupplier(window, supplier);
    NodeAccess::Embed(root.get(), window, nullptr);
    skins::DressWindow(*window);
    if (origin.x != 0 || origin.y != 0) {
        window->move(qRound(origin.x), qRound(origin.y));
        placed = true;
    }
}

void UI_ArchivedDialog::ArchivedState::FitToTexts() const
{
    NodeAccess::ReturnToArchivedPlaces(root.get());
    const LayoutSize size = MakeRoomForTexts(*root);
    NodeAccess::SetFrameByLayout(root.get(), {0, 0, size.width, size.height});
    const QSize whole(static_cast<int>(std::ceil(size.width)), static_cast<int>(std::ceil(size.height)));
    window->resize(whole);
    if (!resizable)
        window->setFixedSize(whole);
    ArrangeTabOrder(*window);
}

void UI_ArchivedDialog::ArchivedState::GiveMnemonics() const
{
    if (!window)
        return;
    const UI_Node* const without[] = {okButton.get(), cancelButton.get()};
    AssignMnemonics(*root, without);
}

void UI_ArchivedDialog::ArchivedState::Show()
{
    // The program may have changed texts since.
    if (!window->isVisible())
        GiveMnemonics();
    if (!placed)
        window->setGeometry(CentredOnParent(window->size(), parent));
    placed = true;
    // The program has made the columns of its lists by now.
    if (!std::exchange(restored, true))
        remembered.Restore(*root, *window);
    window->show();
    window->raise();
    window->activateWindow();
}

void UI_ArchivedDialog::ArchivedState::Hide()
{
    // The parent is unlocked before the window goes. Otherwise the system would give the focus to some other
    // program.
    parentLock.reset();
    if (!window)
        return;
    if (window->isVisible() && root)
        remembered.Remember(*root, *window);
    window->hide();
}

} // namespace zetui::ui
