#include "dialogs/QtPresentation.h"

#include <algorithm>
#include <array>
#include <vector>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTreeView>
#include <zetui/dialogs/messagebox.h>

#include "dialogs/HeldKeys.h"
#include "dialogs/QtProgress.h"
#include "dialogs/QueuedCallsTimer.h"
#include "dialogs/TextWindow.h"
#include "pixmill/LocalizedText.h"
#include "pixmill/QtConversions.h"
#include "screen/ParentWindow.h"
#include "skins/SkinStyle.h"

namespace zetui::dialogs {

namespace {

using namespace messagebox;

struct ButtonKind
{
    int flag;
    QMessageBox::ButtonRole role;
    std::string_view key;
};

constexpr std::array buttonKinds{
    ButtonKind{kOK, QMessageBox::AcceptRole, "$$$/zetui/Dialog/OK=OK"},
    ButtonKind{kYes, QMessageBox::YesRole, "$$$/zetui/Dialog/Yes=&Yes"},
    ButtonKind{kNo, QMessageBox::NoRole, "$$$/zetui/Dialog/No=&No"},
    ButtonKind{kCancel, QMessageBox::RejectRole, "$$$/zetui/Dialog/Cancel=Cancel"},
};

QMessageBox::Icon IconOf(int icon)
{
    switch (icon) {
    case kIconNote:
        return QMessageBox::Information;
    case kIconCaution:
        return QMessageBox::Warning;
    case kIconStop:
        return QMessageBox::Critical;
    default:
        return QMessageBox::NoIcon;
    }
}

/// The answer of a window that the user closes.
int ClosingAnswer(const Question& question)
{
    if (question.buttonSet & kCancel)
        return kCancel;
    return question.buttonSet & kNo ? kNo : question.defaultButton;
}

/// Gives the texts room, and the window a width at which it does not look lost.
void LayOut(QMessageBox& box)
{
    constexpr int margin = 20, narrowest = 320;
    auto* const grid = qobject_cast<QGridLayout*>(box.layout());
    if (!grid)
        return;
    if (auto* const label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        // Beside the icon, a single line stands in its middle. The first of several lines stands near its
        // top.
        const QFontMetrics metrics = label->fontMetrics();
        const int iconHeight = box.iconPixmap().deviceIndependentSize().toSize().height();
        const bool oneLine =
            !box.text().contains(u'\n') && metrics.horizontalAdvance(box.text()) < narrowest - 4 * margin;
        const int above = oneLine ? std::max(0, (iconHeight - metrics.height()) / 2) : 2;
        // Without an icon the text stands on the margin.
        QLayoutItem* const indent = grid->itemAtPosition(0, 0);
        if (iconHeight == 0 && indent && indent->spacerItem())
            indent->spacerItem()->changeSize(0, 0);
        label->setContentsMargins(iconHeight > 0 ? 8 : 0, above, 0, 0);
        label->setIndent(0);
        label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
        int row = 0, column = 0, rows = 0, columns = 0;
        grid->getItemPosition(grid->indexOf(label), &row, &column, &rows, &columns);
        grid->setColumnStretch(column, 1);
    }
    grid->setContentsMargins(margin, margin, margin, margin - 4);
    grid->setHorizontalSpacing(0);
    grid->setVerticalSpacing(12);
    grid->addItem(new QSpacerItem(narrowest - 2 * margin, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

/// Gives the parts of Qt's own chooser their room, and leaves out what is of no use for folders. The choosers
/// of desktops have no such parts.
void LayOut(QFileDialog& chooser)
{
    for (const char* const name : {"fileTypeLabel", "fileTypeCombo"})
        if (auto* const part = chooser.findChild<QWidget*>(QString::fromLatin1(name)))
            part->hide();
    if (auto* const files = chooser.findChild<QTreeView*>(QStringLiteral("treeView"))) {
        files->header()->setStretchLastSection(true);
        files->header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (auto* const places = chooser.findChild<QListView*>(QStringLiteral("sidebar"))) {
        constexpr int iconAndMargins = 48, widest = 240;
        int width = places->width();
        for (int row = 0; row < places->model()->rowCount(); ++row)
            width = std::max(width, iconAndMargins + places->fontMetrics().horizontalAdvance(
                                                         places->model()->index(row, 0).data().toString()));
        places->setMinimumWidth(std::min(width, widest));
    }
}

/// Owns a dialog on the heap. A parent that goes while the dialog is open deletes it first.
template<typename Dialog>
class DialogOwner
{
  public:
    template<typename... Arguments>
    explicit DialogOwner(QWidget* parent, const Arguments&... arguments)
        : dialog(new Dialog(parent, arguments...))
    {}
    ~DialogOwner() { delete dialog.data(); }
    DialogOwner(const DialogOwner&) = delete;
    DialogOwner& operator=(const DialogOwner&) = delete;

    Dialog* operator->() const { return dialog.data(); }
    Dialog& operator*() const { return *dialog; }
    explicit operator bool() const { return !dialog.isNull(); }

  private:
    QPointer<Dialog> dialog;
};

} // namespace

std::unique_ptr<ProgressPresentation> QtPresentation::CreateProgress(ui::WindowVariant parent)
{
    return std::make_unique<QtProgress>(parent);
}

void QtPresentation::ShowAlert(AlertKind kind, const std::string& title, const std::string& message,
                               ui::WindowVariant parent)
{
    Ask({.title = title,
         .message = message,
         .buttonSet = kOK,
         .defaultButton = kOK,
         .icon = kind == AlertKind::Note ? kIconNote : kIconCaution},
        parent);
}

int QtPresentation::Ask(const Question& question, ui::WindowVariant parent)
{
    const DialogOwner<QMessageBox> box(ui::FindParentWidget(parent));
    box->setWindowTitle(pixmill::DisplayLines(question.title));
    box->setTextFormat(Qt::PlainText);
    box->setText(pixmill::DisplayLines(question.message));
    box->setIcon(IconOf(question.icon));

    new HeldAnswerFilter(&*box);
    const int closingAnswer = ClosingAnswer(question);
    std::vector<std::pair<QAbstractButton*, int>> answers;
    for (const ButtonKind& kind : buttonKinds) {
        if ((question.buttonSet & kind.flag) == 0)
            continue;
        QPushButton* const button = box->addButton(pixmill::LocalizedText(kind.key), kind.role);
        button->setMinimumSize(kDialogButtonWidth, kDialogButtonHeight);
        if (kind.flag == question.defaultButton)
            box->setDefaultButton(button);
        if (kind.flag == closingAnswer)
            box->setEscapeButton(button);
        new HeldAnswerFilter(button);
        answers.emplace_back(button, kind.flag);
    }

    skins::DressWindow(*box);
    LayOut(*box);
    ui::PlaceOnForeignParent(*box, parent);
    const QueuedCallsTimer queuedCalls;
    const ui::ParentWindowLock lock(*box, parent);
    box->exec();
    if (!box)
        return closingAnswer;
    const auto pressed =
        std::ranges::find(answers, box->clickedButton(), [](auto& one) { return one.first; });
    return pressed == answers.end() ? closingAnswer : pressed->second;
}

void QtPresentation::ShowText(const std::string& title, const std::string& text, ui::WindowVariant parent)
{
    const DialogOwner<TextWindow> window(ui::FindParentWidget(parent), pixmill::DisplayLines(title),
                                         pixmill::DisplayLines(text));
    skins::DressWindow(*window);
    ui::PlaceOnForeignParent(*window, parent);
    const QueuedCallsTimer queuedCalls;
    const ui::ParentWindowLock lock(*window, parent);
    window->exec();
}

std::wstring QtPresentation::ChooseFolder(const std::wstring& title, ui::WindowVariant parent)
{
    const DialogOwner<QFileDialog> chooser(ui::FindParentWidget(parent));
    chooser->setWindowTitle(pixmill::DisplayText(title));
    chooser->setFileMode(QFileDialog::Directory);
    chooser->setOption(QFileDialog::ShowDirsOnly);
    // Some desktops' own choosers show an ampersand as it stands.
    chooser->setLabelText(QFileDialog::Accept,
                          pixmill::LocalizedText("$$$/zetui/FolderChooser/ChooseFolder=Choose"));
    chooser->setLabelText(QFileDialog::Reject, pixmill::LocalizedText("$$$/zetui/Dialog/Cancel=Cancel"));
    chooser->setLabelText(QFileDialog::LookIn,
                          pixmill::LocalizedText("$$$/zetui/FolderChooser/LookIn=Look in:"));
    chooser->setLabelText(QFileDialog::FileName,
                          pixmill::LocalizedText("$$$/zetui/FolderChooser/Folder=Folder:"));
    chooser->setDirectory(lastFolder.empty() ? QDir::homePath() : pixmill::ToQString(lastFolder));

    skins::DressWindow(*chooser);
    LayOut(*chooser);
    ui::PlaceOnForeignParent(*chooser, parent);
    const QueuedCallsTimer queuedCalls;
    const ui::ParentWindowLock lock(*chooser, parent);
    if (chooser->exec() != QDialog::Accepted || !chooser || chooser->selectedFiles().isEmpty())
        return {};
    lastFolder = pixmill::ToWide(QDir::toNativeSeparators(chooser->selectedFiles().constFirst()));
    return lastFolder;
}

} // namespace zetui::dialogs
