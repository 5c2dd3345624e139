// The texts of the progress window, and the window itself.
#include "dialogs/QtProgress.h"

#include <memory>

#include <QHelpEvent>
#include <QToolTip>

#include "testing/Paints.h"
#include "testing/ProgressWindowFixture.h"

namespace zetui::dialogs {
namespace {

TEST_F(ProgressInAWindow, ShowsTitleTextExtraTextAndBar)
{
    const auto dialog = Make();
    dialog->SetExtraText("/vst/<b>Gr\xC3\xBC\xC3\x9F"
                         "e</b>.so");
    dialog->SetProgress(3, 160, "Text");
    dialog->BeginModal();
    ASSERT_NE(Window(), nullptr);
    EXPECT_EQ(Window()->windowTitle(), QStringLiteral("Scanning"));
    EXPECT_EQ(Extra()->text(), QStringLiteral("/vst/<b>Gr\u00FC\u00DFe</b>.so"));
    EXPECT_DOUBLE_EQ(BarPart(), 3 / 160.0);
    EXPECT_EQ(Count()->text(), QStringLiteral("3 of 160"));
    EXPECT_TRUE(Window()->isModal());
    dialog->EndModal();
    EXPECT_EQ(Window(), nullptr);
}

TEST_F(ProgressInAWindow, ShortensALongPathInItsMiddleWithoutGrowing)
{
    const auto dialog = Make();
    dialog->BeginModal();
    const QSize size = Window()->size();
    const std::string path = "/start/" + std::string(500, 'x') + "/end.so";
    dialog->SetExtraText(path);
    dialog->ModalDuring();
    EXPECT_EQ(Window()->size(), size);
    EXPECT_EQ(Extra()->text(), QString::fromStdString(path));
    const QString shown = Extra()->ShownText();
    EXPECT_TRUE(shown.startsWith(QStringLiteral("/start/")));
    EXPECT_TRUE(shown.endsWith(QStringLiteral("/end.so")));
    EXPECT_LE(Extra()->fontMetrics().horizontalAdvance(shown), Extra()->width());
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, TellsAllOfAShortenedPathInATooltip)
{
    const auto dialog = Make();
    dialog->BeginModal();
    const auto tooltip = [] {
        QHelpEvent point(QEvent::ToolTip, QPoint(5, 5), Extra()->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(Extra(), &point);
        return QToolTip::text();
    };
    dialog->SetExtraText("/vst/short.so");
    EXPECT_EQ(tooltip(), QString());
    const std::string path = "/vst & more/" + std::string(500, 'x') + ".so";
    dialog->SetExtraText(path);
    EXPECT_EQ(tooltip(), QString::fromStdString(path));
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, ChangesAreOnTheScreenAtOnce)
{
    const auto dialog = Make();
    dialog->BeginModal();
    dialog->ModalDuring();
    Paints paints;
    Extra()->installEventFilter(&paints);
    Bar()->installEventFilter(&paints);
    dialog->SetExtraText("/vst/reverb.so");
    dialog->SetProgress(1, 2, "");
    dialog->ModalDuring();
    EXPECT_GE(paints.count, 2);
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, PatienceStandsBehindThePath)
{
    const auto dialog = Make();
    dialog->SetPatience(std::chrono::seconds(0),
                        [](std::chrono::seconds) { return "12 s, is ended after 60 s"; });
    dialog->BeginModal();
    dialog->SetExtraText("/vst/" + std::string(300, 'x') + "/end.so");
    dialog->ModalDuring();
    // The file's name stays, too.
    EXPECT_TRUE(Extra()->ShownText().endsWith(QStringLiteral("x/end.so (12 s, is ended after 60 s)")))
        << Extra()->ShownText().toStdString();
    EXPECT_LE(Extra()->fontMetrics().horizontalAdvance(Extra()->ShownText()), Extra()->width());
    EXPECT_TRUE(Extra()->text().endsWith(QStringLiteral("x/end.so (12 s, is ended after 60 s)")));
    dialog->SetExtraText("/vst/short.so");
    EXPECT_EQ(Extra()->ShownText(), QStringLiteral("/vst/short.so"));
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, BlocksItsParentAndSurvivesItsEnd)
{
    auto host = std::make_unique<QWidget>();
    host->show();
    const auto dialog = Make(false, true, ui::WindowVariant(reinterpret_cast<HWND>(host->winId())));
    dialog->BeginModal();
    EXPECT_EQ(Window()->parentWidget(), host.get());
    EXPECT_EQ(Window()->windowModality(), Qt::WindowModal);
    host.reset();
    dialog->SetExtraText("text");
    dialog->SetProgress(1, 2, "");
    dialog->ModalDuring();
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, GrowsForATextThatComesLater)
{
    const auto dialog = Make();
    dialog->BeginModal();
    const int height = Window()->height();
    dialog->SetProgress(1, 2, "A text of its own");
    EXPECT_GT(Window()->height(), height);
    dialog->SetProgress(1, 2, "");
    EXPECT_EQ(Window()->height(), height);
    dialog->EndModal();
}

} // namespace
} // namespace zetui::dialogs
