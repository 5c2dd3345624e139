#include "controls/ClearableLineEdit.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>

#include "pixmill/LocalizedText.h"
#include "skins/SkinIcons.h"

namespace zetui::controls {

namespace {

constexpr qsizetype rememberedSearches = 10;

} // namespace

ClearableLineEdit::ClearableLineEdit()
    : clear(addAction(skins::MakeIcon("clear"), QLineEdit::TrailingPosition))
{
    const QString name = pixmill::LocalizedText("$$$/zetui/SearchBox/Clear=Clear");
    clear->setText(name);
    clear->setToolTip(name);
    connect(clear, &QAction::triggered, this, [this] { Clear(); });
    connect(this, &QLineEdit::textChanged, this, [this] { UpdateClearButton(); });
    UpdateClearButton();
}

void ClearableLineEdit::Clear()
{
    selectAll();
    del();
    Q_EMIT editingFinished();
}

void ClearableLineEdit::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape || event->modifiers() != Qt::NoModifier || text().isEmpty() ||
        isReadOnly()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    event->accept();
    Clear();
}

void ClearableLineEdit::UpdateClearButton()
{
    clear->setVisible(!text().isEmpty());
}

SearchLineEdit::SearchLineEdit(bool withMenu)
    : magnifier(addAction(skins::MakeIcon("search"), QLineEdit::LeadingPosition))
{
    const QString name = pixmill::LocalizedText("$$$/zetui/SearchBox/Prompt=Search");
    magnifier->setText(name);
    magnifier->setToolTip(QString());
    setPlaceholderText(name);
    if (withMenu)
        connect(magnifier, &QAction::triggered, this, [this] { ShowMenu(); });
    else
        connect(magnifier, &QAction::triggered, this, [this] { setFocus(Qt::MouseFocusReason); });
}

void SearchLineEdit::Remember(const QString& search)
{
    if (search.isEmpty())
        return;
    searches.removeAll(search);
    searches.prepend(search);
    while (searches.size() > rememberedSearches)
        searches.removeLast();
}

void SearchLineEdit::ShowMenu()
{
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const QString& search : searches) {
        QString shown = search;
        QAction* const action = menu->addAction(shown.replace(QLatin1Char('&'), QStringLiteral("&&")));
        connect(action, &QAction::triggered, this, [this, search] {
            selectAll();
            insert(search);
            Q_EMIT editingFinished();
        });
    }
    menu->popup(mapToGlobal(QPoint(0, height())));
}

} // namespace zetui::controls
