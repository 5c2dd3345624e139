#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace zetui::skins {

/// Shows the lines below mnemonics in the window in which the user keeps Alt down. It is the application's
/// child.
class MnemonicCues : public QObject
{
  public:
    /// From now on, for as long as the application lives. There is an application.
    static void Follow();
    static bool AreShownFor(const QWidget* widget);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    explicit MnemonicCues(QObject& application);
    void ShowIn(QWidget* window);

    QPointer<QWidget> shownIn;
};

/// True when the user wants to see them at all times.
bool SystemAlwaysShowsMnemonics();

} // namespace zetui::skins
