// The menus of the plug-in list's rows in the manager dialog.
#include <set>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QUrl>
#include <gmock/gmock.h>
#include <zetcore/config/Localizer.h>
#include <zettesting/Patience.h>

#include "scan/ScanLogs.h"
#include "testing/DialogScansFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using zetcore::config::Localizer;
using zettesting::ToWide;

class DialogMenu : public DialogScansFixture
{
  protected:
    ~DialogMenu() override { Localizer::Get().Reset(); }

    static QMenu* Popup() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    void OpenMenu(const std::wstring& name)
    {
        WidgetOf(PluginList()).setFocus();
        PluginList().SelectRow(RowOf(name).get(), true);
        QTest::keyClick(&WidgetOf(PluginList()), Qt::Key_F10, Qt::ShiftModifier);
        if (!Popup())
            throw std::runtime_error("no menu");
    }
    static std::vector<std::string> Commands()
    {
        std::vector<std::string> texts;
        for (const QAction* const action : Popup()->actions()) {
            if (!action->isSeparator())
                texts.push_back(action->text().toStdString());
        }
        return texts;
    }
    /// Chooses by the command's letter.
    void Choose(const std::wstring& name, Qt::Key letter)
    {
        OpenMenu(name);
        QTest::keyClick(Popup(), letter);
        EXPECT_EQ(Popup(), nullptr);
        HandleEvents();
    }
    static std::string Clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }
    void WriteLog(const std::string& name, const std::string& text) const
    {
        std::filesystem::create_directories(prefs / "scan-logs");
        zettesting::WriteAll(prefs / "scan-logs" / name, text);
    }
};

TEST_F(DialogMenu, OffersWhatARowCanDo)
{
    AddPlugin(L"On", L"/a/on.so");
    AddPlugin(L"Off", L"/a/off.so")->SetEnabled(false);
    Ban(L"/a/bad.so");
    OpenDialog();
    const auto commandsOf = [this](const wchar_t* name) {
        OpenMenu(name);
        const auto commands = Commands();
        Popup()->close();
        HandleEvents();
        return commands;
    };
    EXPECT_THAT(commandsOf(L"On"),
                ElementsAre("&Disable", "Copy &Path", "&Copy Details", "Show in &Folder", "Show &Log"));
    EXPECT_EQ(commandsOf(L"Off").front(), "&Enable");
    EXPECT_EQ(commandsOf(L"bad.so").front(), "&Reload");
}

TEST_F(DialogMenu, SwitchesThePluginAndItsCheckbox)
{
    const auto info = AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    Choose(L"One", Qt::Key_D);
    EXPECT_FALSE(info->IsEnabled());
    EXPECT_FALSE(CheckboxOf(L"One")->IsChecked());
    Choose(L"One", Qt::Key_E);
    EXPECT_TRUE(info->IsEnabled());
    EXPECT_TRUE(CheckboxOf(L"One")->IsChecked());
}

TEST_F(DialogMenu, ReloadsABannedPlugin)
{
    const std::wstring path = Copy("good/vst2_effect", "effect");
    Ban(path);
    OpenDialog();
    Choose(Names().front(), Qt::Key_R);
    EXPECT_FALSE(AnythingIsBanned());
    EXPECT_EQ(shown->progressDialogs, 1);
}

TEST_F(DialogMenu, CopiesThePathAndAllThatIsKnown)
{
    AddPlugin(L"One", L"/a/1.so", L"2.5");
    Ban(L"/a/bad.so", "It crashed.");
    OpenDialog();
    Choose(L"One", Qt::Key_P);
    EXPECT_EQ(Clipboard(), "/a/1.so");
    Choose(L"One", Qt::Key_C);
    EXPECT_EQ(Clipboard(), "Name: One\nStatus: Working\nPath: /a/1.so\nFormat: VST\nVersion: 2.5\n");
    Choose(L"bad.so", Qt::Key_C);
    EXPECT_THAT(Clipboard(), HasSubstr("Status: Not Working\nIt crashed."));
    EXPECT_THAT(Clipboard(), HasSubstr("Path: /a/bad.so\n"));
}

TEST_F(DialogMenu, ShowsThePluginsPartOfTheNewestLogThatHasOne)
{
    AddPlugin(L"One", L"/a/1.so");
    AddPlugin(L"Two", L"/a/2.so");
    WriteLog("scan-20240101-000000-000-1.log", "== VST|/a/1.so|\nold\n== VST|/a/2.so|\nof two\n");
    WriteLog("scan-20240102-000000-000-1.log",
             "== VST|/a/1.so|\nnew\n-- a note\n== VST|/a/3.so|\nof three\n== VST|/a/1.so|\nagain\n");
    WriteLog("scan-20240103-000000-000-1.log", "== VST|/a/11.so|\nof eleven\n");
    // Nobody can read this one.
    std::filesystem::create_directories(prefs / "scan-logs" / "scan-20240104-000000-000-1.log");
    WriteLog("zzz.txt", "== VST|/a/1.so|\nno log\n");
    OpenDialog();
    Choose(L"One", Qt::Key_L);
    ASSERT_EQ(shown->texts.size(), 1u);
    EXPECT_EQ(shown->texts[0].title, "Scan Log of One");
    EXPECT_THAT(shown->texts[0].message, HasSubstr("new\n-- a note\nagain\n"));
    const std::filesystem::path file = prefs / "scan-logs" / "scan-20240102-000000-000-1.log";
    EXPECT_THAT(shown->texts[0].message, StartsWith(file.string() + "\n\n")) << "nothing is left out";
    EXPECT_THAT(shown->texts[0].message, Not(HasSubstr("three")));
    Choose(L"Two", Qt::Key_L);
    ASSERT_EQ(shown->texts.size(), 2u);
    EXPECT_THAT(shown->texts[1].message, HasSubstr("of two\n"));
    EXPECT_TRUE(shown->alerts.empty());
    EXPECT_TRUE(WereShownForTheDialog(2));
}

TEST_F(DialogMenu, SaysThatThereIsNoLog)
{
    AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    Choose(L"One", Qt::Key_L);
    ASSERT_EQ(shown->alerts.size(), 1u);
    EXPECT_EQ(shown->alerts[0].message,
              "The latest scans have recorded nothing about One. Their logs are in this folder: " +
                  (prefs / "scan-logs").string());
    EXPECT_TRUE(shown->texts.empty());
}

TEST_F(DialogMenu, ShowsWhatARealScanHasRecorded)
{
    const std::wstring path = Copy("bad/floods_output", "talks");
    Ban(path);
    OpenDialog();
    Choose(Names().front(), Qt::Key_R);
    Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(), zettesting::patienceInMilliseconds));
    ASSERT_EQ(PluginList().GetRowCount(), 1);
    Choose(Names().front(), Qt::Key_L);
    ASSERT_EQ(shown->texts.size(), 1u);
    EXPECT_GT(shown->texts[0].message.size(), 1000u);
    EXPECT_LT(shown->texts[0].message.size(), 70'000u) << "a window has no room for all of it";
    EXPECT_THAT(shown->texts[0].message, StartsWith("Only the end is shown: the last 64 KB of "));
    EXPECT_THAT(shown->texts[0].message,
                HasSubstr(" KB. The whole log: " + (prefs / "scan-logs" / "scan-").string()));
}

TEST_F(DialogMenu, OpensARealWindowThatScrollsWithTheLinesOfARealScan)
{
    Ban(Copy("bad/floods_output", "talks"));
    Ban(Copy("bad/crash_in_entry", "other"));
    OpenDialog();
    const std::string suffix(zettesting::ModuleSuffix());
    const std::wstring other = ToWide("other" + suffix);
    Press(*ReloadButtonOf(ToWide("talks" + suffix)));
    Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(), zettesting::patienceInMilliseconds));
    // From here on the windows are those of the program.
    shown.reset();
    std::string title, text;
    bool scrolled = false;
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, &looks, [&] {
        QWidget* const window = QApplication::activeModalWidget();
        auto* const lines = window && window != &Window() ? window->findChild<QPlainTextEdit*>() : nullptr;
        if (!lines || !lines->isVisible())
            return;
        looks.stop();
        title = window->windowTitle().toStdString();
        text = lines->toPlainText().toStdString();
        EXPECT_LE(window->height(), window->screen()->availableGeometry().height());
        const int before = lines->verticalScrollBar()->value();
        QTest::keyClick(lines, Qt::Key_PageDown);
        scrolled = lines->verticalScrollBar()->value() > before;
        QTest::keyClick(window, Qt::Key_Escape);
    });
    looks.start(10);
    const std::vector<std::wstring> names = Names();
    ASSERT_EQ(names.size(), 2u);
    Choose(names[0] == other ? names[1] : names[0], Qt::Key_L);
    EXPECT_THAT(title, StartsWith("Scan Log of "));
    EXPECT_TRUE(scrolled);
    EXPECT_THAT(text, HasSubstr((prefs / "scan-logs" / "scan-").string()));
    EXPECT_THAT(text, HasSubstr("~~~~~~~~")) << "what the plug-in printed";
    EXPECT_THAT(text, Not(HasSubstr("other")));
    EXPECT_FALSE(looks.isActive());
}

TEST_F(DialogMenu, ShowsTheFolderOfAPluginOrOfOneThatIsGone)
{
    const std::wstring path = Copy("good/vst2_effect", "effect");
    AddPlugin(L"There", path);
    AddPlugin(L"Gone", ToWide(plugins / "no such folder" / "deeper" / "gone.so"));
    OpenDialog();
    // The desktop's part is played by an object with a signal for addresses.
    QTextBrowser desktop;
    QList<QUrl> opened;
    QObject::connect(&desktop, &QTextBrowser::anchorClicked, &desktop,
                     [&opened](const QUrl& url) { opened.append(url); });
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &desktop, "anchorClicked");
    // Windows' own program selects a file that is there; nobody is asked for its folder.
    const bool hasProgram = zettesting::ModuleSuffix() == ".dll";
    if (!hasProgram)
        Choose(L"There", Qt::Key_F);
    Choose(L"Gone", Qt::Key_F);
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    const QUrl folderUrl = QUrl::fromLocalFile(QString::fromStdWString(ToWide(plugins)));
    EXPECT_EQ(opened, QList<QUrl>(hasProgram ? 1 : 2, folderUrl));
    EXPECT_TRUE(shown->alerts.empty());
}

TEST_F(DialogMenu, SaysThatNoFileManagerCanBeStarted)
{
    const auto gone = plugins / "gone";
    AddPlugin(L"One", ToWide(gone / "1.so"));
    OpenDialog();
    Choose(L"One", Qt::Key_F);
    ASSERT_EQ(shown->alerts.size(), 1u);
    EXPECT_EQ(shown->alerts[0].message, "No file manager opened this folder: " + gone.string() +
                                            ". “Copy Path” in the same menu copies the plug-in's path.");
}

TEST_F(DialogMenu, TheLettersOfACommandAreItsOwnInEveryLanguage)
{
    AddPlugin(L"On", L"/a/on.so");
    Ban(L"/a/bad.so");
    for (const char* language : {"en", "de", "fr", "es", "ja", "zh-Hans"}) {
        Localizer::Get().Reset();
        Localizer::Get().LoadTable(zetcore::filesupport::File(
            ToWide(std::filesystem::path(ZET_STRING_TABLES) / (std::string(language) + ".txt"))));
        OpenDialog();
        for (const wchar_t* name : {L"On", L"bad.so"}) {
            OpenMenu(name);
            std::set<QString> letters;
            for (const std::string& text : Commands())
                letters.insert(QKeySequence::mnemonic(QString::fromStdString(text)).toString());
            EXPECT_EQ(letters.size(), Commands().size()) << language;
            EXPECT_EQ(letters.count(QString()), 0u) << language;
            Popup()->close();
            HandleEvents();
        }
        CloseDialog();
    }
}

TEST(PartOfLog, EndsWithTheNextHeading)
{
    const zetaudiofilterhost::PluginLocator plugin(zetaudiofilterhost::TechnologyType::VST, L"/a/1.so");
    EXPECT_EQ(PartOfLog("", plugin), "");
    EXPECT_EQ(PartOfLog("before\n== VST|/a/1.so|\na\r\nb\n== VST|/a/10.so|\nc\n", plugin), "a\nb\n");
    EXPECT_EQ(PartOfLog("== VST3|/a/1.so|\na\n", plugin), "");
    EXPECT_EQ(PartOfLog("== VST|/a/1.so2|\na\n", plugin), "") << "a longer path";
}

TEST(PartOfLog, HasTheNotesAboutThePluginAndNoneAboutOthers)
{
    const zetaudiofilterhost::PluginLocator plugin(zetaudiofilterhost::TechnologyType::VST, L"/a/1.so");
    EXPECT_EQ(PartOfLog("-- VST|/a/1.so| crashed. It is tried once more.\n"
                        "-- VST|/a/10.so| crashed.\n"
                        "== VST|/a/2.so|\nof two\n"
                        "-- VST|/a/1.so| crashed again.\n",
                        plugin),
              "-- VST|/a/1.so| crashed. It is tried once more.\n-- VST|/a/1.so| crashed again.\n");
    EXPECT_EQ(PartOfLog("== VST|/a/1.so|\nsaid\n"
                        "-- A worker is ended; loaded in it: VST|/a/1.so|, VST|/a/2.so|.\n"
                        "-- refused to write\nmore\n",
                        plugin),
              "said\n-- refused to write\nmore\n");
}

TEST(LastLines, AreWholeAndNoMoreThanAskedFor)
{
    EXPECT_EQ(LastLines("", 3), "");
    EXPECT_EQ(LastLines("a\nb\n", 4), "a\nb\n");
    EXPECT_EQ(LastLines("a\nb\n", 3), "b\n");
    EXPECT_EQ(LastLines("a\nb\n", 2), "b\n");
    EXPECT_EQ(LastLines("aa\nb", 1), "b");
    EXPECT_EQ(LastLines("abcdef\n", 3), "ef\n") << "one line that is too long";
    EXPECT_EQ(LastLines("abcdef", 3), "def");
    EXPECT_EQ(LastLines("aéi", 3), "éi");
    EXPECT_EQ(LastLines("aéi", 2), "i") << "no half of a character";
}

} // namespace
} // namespace zetaudiopluginhostui
