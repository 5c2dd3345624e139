#include "dialogs/TextWindow.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <zetcore/config/Localizer.h>

#include "dialogs/HeldKeys.h"
#include "dialogs/ProgressWindow.h"
#include "pixmill/QtConversions.h"

namespace zetui::dialogs {

TextWindow::TextWindow(QWidget* parent, const QString& title, const QString& text)
    : QDialog(parent), field(new QPlainTextEdit(this))
{
    constexpr int margin = 16, width = 640, height = 400;
    setWindowTitle(title);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    field->setPlainText(text);
    field->setReadOnly(true);
    field->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    field->setTabChangesFocus(true);
    field->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    field->setAccessibleName(title);
    auto* const close = new QPushButton(
        pixmill::DisplayLines(zetcore::config::Localizer::Get().Localize("$$$/zetui/Dialog/Close=Close")),
        this);
    close->setMinimumSize(kDialogButtonWidth, kDialogButtonHeight);
    close->setDefault(true);
    new HeldAnswerFilter(close);
    connect(close, &QPushButton::clicked, this, [this] { accept(); });

    auto* const lines = new QVBoxLayout(this);
    lines->setContentsMargins(margin, margin, margin, margin - 4);
    lines->setSpacing(12);
    lines->addWidget(field, 1);
    auto* const lastLine = new QHBoxLayout;
    lastLine->addStretch(1);
    lastLine->addWidget(close);
    lines->addLayout(lastLine);
    resize(width, height);
    field->setFocus();
}

} // namespace zetui::dialogs
