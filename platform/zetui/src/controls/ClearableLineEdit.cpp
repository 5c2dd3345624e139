#include "controls/ClearableLineEdit.h"

#include <QAction>
#include <QMenu>

#include <zetcore/config/Localizer.h>

#include "pixmill/QtConversions.h"
#include "skins/SkinIcons.h"

namespace zetui::controls {

namespace {

constexpr qsizetype rememberedSearches = 10;

QString Localized(const char* key)
{
    return pixmill::ToQString(zetcore::config::Localizer::Get().LocalizeWide(key));
}

} // namespace

ClearableLineEdit::ClearableLineEdit()
    : clear(addAction(skins::MakeIcon("clear"), QLineEdit::TrailingPosition))
{
    const QString name = Localized("$$$/zetui/SearchBox/Clear=Clear");
    clear->setText(name);
    clear->setToolTip(name);
    connect(clear, &QAction::triggered, this, [this] {
        // The text is deleted as by typing, so that the user can undo it. Then the change is complete.
        selectAll();
        del();
        Q_EMIT editingFinished();
    });
    connect(this, &QLineEdit::textChanged, this, [this] { UpdateClearButton(); });
    UpdateClearButton();
}

void ClearableLineEdit::UpdateClearButton()
{
    clear->setVisible(!text().isEmpty());
}

SearchLineEdit::SearchLineEdit(bool withMenu)
    : magnifier(addAction(skins::MakeIcon("search"), QLineEdit::LeadingPosition))
{
    const QString name = Localized("$$$/zetui/SearchBox/Prompt=Search");
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
