// These tests use the folder list of the manager dialog and its buttons.
#include <QTableView>
#include <QTest>
#include <gmock/gmock.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/utility/ClientName.h>
#include <zettesting/TemporaryFolder.h>
#include <zettesting/TestPlugins.h>

#include "dialog/PluginManagerIds.h"
#include "testing/DialogFixture.h"
#include "testing/FillCount.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zettesting::ToWide;
using zetui::ui::UI_Node;

class FolderCommands : public DialogFixture
{
  protected:
    FolderCommands() { std::filesystem::create_directory(real); }

    static void AddFolders(const std::vector<std::wstring>& paths)
    {
        TheRegistry().GetPluginTechnology(2)->AddPluginDirectories(paths);
    }
    void ClickFolder(int place, Qt::KeyboardModifiers modifiers = {}) const
    {
        auto& view = dynamic_cast<QTableView&>(WidgetOf(FolderList()));
        const QPoint middle = view.visualRect(view.model()->index(place, 0)).center();
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, middle);
        HandleEvents();
    }
    bool CanRemove() const { return Node<UI_Node>(ids::kRemoveDirectoryButton).UI_IsEnabled(); }

    const std::filesystem::path real = folder / "plug-ins";
};

TEST_F(FolderCommands, TheListShowsTheVstFoldersInTheirOrder)
{
    AddFolders({L"/second", L"/first"});
    TheRegistry().GetPluginTechnology(3)->AddPluginDirectories({L"/of another technology"});
    OpenDialog();
    EXPECT_THAT(Folders(), ElementsAre(ToWide("/second"), ToWide("/first")));
    AddFolders({L"/third"});
    EXPECT_THAT(Folders(), ElementsAre(ToWide("/second"), ToWide("/first"), ToWide("/third")));
}

TEST_F(FolderCommands, CancellingTheChooserChangesNothing)
{
    AddFolders({L"/first"});
    OpenDialog();
    Press(ids::kAddDirectoryButton);
    EXPECT_THAT(shown->choosers, ElementsAre(L"Choose a Plug-In Folder:"));
    EXPECT_TRUE(WereShownForTheDialog(1));
    EXPECT_THAT(Folders(), ElementsAre(ToWide("/first")));
    EXPECT_THAT(VstFolders(), ElementsAre(ToWide("/first")));
    EXPECT_TRUE(shown->alerts.empty());
}

TEST_F(FolderCommands, AFolderJustAddedIsSelectedAndInSight)
{
    for (int i = 0; i < 30; ++i)
        AddFolders({L"/folder" + std::to_wstring(i)});
    OpenDialog();
    ClickFolder(0);
    shown->chosenFolder = ToWide(real);
    Press(ids::kAddDirectoryButton);
    ASSERT_EQ(Folders().size(), 31u);
    const auto selected = FolderList().GetSelectedRows();
    ASSERT_EQ(selected.size(), 1u);
    EXPECT_EQ(selected.front(), FolderList().GetRowAt(30));
    EXPECT_TRUE(FolderList().IsRowVisible(selected.front().get()));
    EXPECT_TRUE(CanRemove());
    FolderList().ScrollToTop(true);
    FolderList().DeselectAll();
    Press(ids::kAddDirectoryButton);
    EXPECT_EQ(FolderList().GetSelectedRows().size(), 1u) << "also when it is in the list already";
}

TEST_F(FolderCommands, AFolderThatIsNotThereIsGreyAndSaysWhy)
{
    AddFolders({ToWide(real), L"/no-such-folder"});
    OpenDialog();
    const auto& view = dynamic_cast<QTableView&>(WidgetOf(FolderList()));
    const auto tooltip = [&view](int row) {
        return view.model()->index(row, 0).data(Qt::ToolTipRole).toString();
    };
    EXPECT_TRUE(WaitUntil([&] { return tooltip(1).contains(QStringLiteral("does not exist")); }));
    EXPECT_FALSE(tooltip(0).contains(QStringLiteral("does not exist")));
    const auto darkest = [&view](int row) {
        QRect cell = view.visualRect(view.model()->index(row, 0));
        const QImage picture = view.viewport()->grab(cell).toImage();
        int least = 255;
        for (int y = 2; y < picture.height() - 2; ++y)
            for (int x = 0; x < picture.width() / 2; ++x)
                least = std::min(least, qGray(picture.pixel(x, y)));
        return least;
    };
    EXPECT_LT(darkest(0), darkest(1)) << "grey";
    const auto hasWord = [&view](int row) {
        QRect end = view.visualRect(view.model()->index(row, 0)).adjusted(0, 2, -2, -2);
        end.setLeft(end.right() - 40);
        const QImage picture = view.viewport()->grab(end).toImage();
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (std::abs(qGray(picture.pixel(x, y)) - qGray(picture.pixel(0, 0))) > 60)
                    return true;
        return false;
    };
    EXPECT_TRUE(hasWord(1)) << "a word at the right says why";
    EXPECT_FALSE(hasWord(0));
}

TEST_F(FolderCommands, AFolderOfADriveThatIsAwayIsGreyAndSaysOffline)
{
    const bool hasDriveLetters = zettesting::ModuleSuffix() == ".dll";
    // Every other row has the same background.
    AddFolders({L"/no-such-folder", ToWide(real),
                hasDriveLetters ? L"Q:\\drive\\plug-ins" : L"/mnt/no-such-drive/plug-ins"});
    OpenDialog();
    const auto& view = dynamic_cast<QTableView&>(WidgetOf(FolderList()));
    const auto tooltip = [&view](int row) {
        return view.model()->index(row, 0).data(Qt::ToolTipRole).toString();
    };
    EXPECT_TRUE(WaitUntil([&] { return tooltip(2).contains(QStringLiteral("not connected")); }))
        << tooltip(2).toStdString();
    EXPECT_FALSE(tooltip(0).contains(QStringLiteral("not connected")));
    const auto endOf = [&view](int row) {
        QRect end = view.visualRect(view.model()->index(row, 0)).adjusted(0, 2, -2, -2);
        end.setLeft(end.right() - 60);
        return view.viewport()->grab(end).toImage();
    };
    EXPECT_NE(endOf(2), endOf(0)) << "another word than that of a folder that does not exist";
    zetcore::config::Localizer::Get().LoadTableFromText(
        "\"$$$/AudioPluginManager/FolderOffline\"=\"away\"\n"
        "\"$$$/AudioPluginManager/FolderNotFound\"=\"away\"\n",
        "test");
    EXPECT_EQ(endOf(2), endOf(0)) << "the words are all that differs there";
    zetcore::config::Localizer::Get().Reset();
}

TEST_F(FolderCommands, APathWithoutRoomIsWholeInTheTooltip)
{
    const std::wstring path = L"/" + std::wstring(300, L'x');
    AddFolders({path, L"/short"});
    OpenDialog();
    const auto& view = dynamic_cast<QTableView&>(WidgetOf(FolderList()));
    const auto tooltip = [&view](int row) {
        return view.model()->index(row, 0).data(Qt::ToolTipRole).toString();
    };
    EXPECT_TRUE(tooltip(0).contains(QStringLiteral("xxxxxxxxxx")));
    EXPECT_FALSE(tooltip(1).contains(QStringLiteral("short")));
}

TEST_F(FolderCommands, ChoosingAFolderThatIsGoneChangesNothing)
{
    OpenDialog();
    shown->chosenFolder = ToWide(real);
    shown->onChoose = [this] { std::filesystem::remove(real); };
    Press(ids::kAddDirectoryButton);
    EXPECT_EQ(shown->choosers.size(), 1u);
    EXPECT_THAT(VstFolders(), IsEmpty());
    EXPECT_TRUE(shown->alerts.empty());
}

TEST_F(FolderCommands, AChosenFolderIsAddedOnceHoweverOftenItIsChosen)
{
    OpenDialog();
    shown->chosenFolder = ToWide(real);
    Press(ids::kAddDirectoryButton);
    EXPECT_THAT(Folders(), ElementsAre(ToWide(real)));
    shown->chosenFolder = ToWide(real) + L"/";
    Press(ids::kAddDirectoryButton);
    EXPECT_THAT(Folders(), ElementsAre(ToWide(real)));
    EXPECT_THAT(VstFolders(), ElementsAre(ToWide(real)));
}

TEST_F(FolderCommands, RemoveIsEnabledWhileARowIsSelectedAndRemovesTheSelectedOnes)
{
    AddFolders({L"/one", L"/two", L"/three"});
    OpenDialog();
    EXPECT_FALSE(CanRemove());
    Press(ids::kRemoveDirectoryButton);
    EXPECT_EQ(VstFolders().size(), 3u) << "nothing is selected";
    ClickFolder(0);
    EXPECT_TRUE(CanRemove());
    ClickFolder(2, Qt::ControlModifier);
    int changes = 0;
    const zetcore::events::ScopedConnection connection =
        TheRegistry().GetPluginTechnology(2)->GetDirectoriesChangedSignal().Connect(
            [&changes](const auto&) { ++changes; });
    Press(ids::kRemoveDirectoryButton);
    EXPECT_EQ(changes, 1) << "both at once";
    EXPECT_TRUE(shown->questions.empty() && shown->alerts.empty());
    EXPECT_THAT(Folders(), ElementsAre(ToWide("/two")));
    EXPECT_THAT(VstFolders(), ElementsAre(ToWide("/two")));
    EXPECT_TRUE(CanRemove()) << "the next folder is selected";
}

TEST_F(FolderCommands, AClickBelowTheRowsDeselectsThemAndDisablesRemove)
{
    AddFolders({L"/one"});
    OpenDialog();
    ClickFolder(0);
    ASSERT_TRUE(CanRemove());
    auto& view = dynamic_cast<QTableView&>(WidgetOf(FolderList()));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(20, view.viewport()->height() - 2));
    HandleEvents();
    EXPECT_FALSE(CanRemove());
}

TEST_F(FolderCommands, AClickWithControlDeselectsTheLastRowAndSpaceDoesNotSelectItAgain)
{
    AddFolders({L"/one"});
    OpenDialog();
    ClickFolder(0);
    ClickFolder(0, Qt::ControlModifier);
    EXPECT_FALSE(CanRemove());
    WidgetOf(FolderList()).setFocus();
    QTest::keyClick(&WidgetOf(FolderList()), Qt::Key_Space);
    EXPECT_FALSE(CanRemove()) << "only arrow keys select";
    QTest::keyClick(&WidgetOf(FolderList()), Qt::Key_Down);
    EXPECT_TRUE(CanRemove());
}

TEST_F(FolderCommands, TheOnlyColumnLeavesRoomAtItsRight)
{
    OpenDialog();
    const auto& view = dynamic_cast<QTableView&>(WidgetOf(FolderList()));
    EXPECT_EQ(view.model()->columnCount(), 1);
    EXPECT_EQ(view.columnWidth(0), view.viewport()->width() - 12);
}

TEST_F(FolderCommands, DefaultAsksBeforeItDeletesFoldersAndNoIsTheDefaultAnswer)
{
    zetcore::utility::SetClientName(L"Studio");
    AddFolders({L"/my own"});
    OpenDialog();
    shown->answer = 64;
    Press(ids::kDefaultDirectoriesButton);
    EXPECT_THAT(VstFolders(), ElementsAre(ToWide("/my own")));
    ASSERT_EQ(shown->questions.size(), 1u);
    const auto& question = shown->questions.front();
    EXPECT_EQ(question.title, "Studio");
    EXPECT_EQ(question.message,
              "Resetting the application's VST Plug-In folder settings to the default will delete any custom "
              "folders that have been specified. Do you want to continue?");
    EXPECT_EQ(question.buttonSet, 80);
    EXPECT_EQ(question.defaultButton, 64);
    EXPECT_EQ(question.icon, 2);
    EXPECT_TRUE(WereShownForTheDialog(1));

    shown->answer = 16;
    Press(ids::kDefaultDirectoriesButton);
    EXPECT_EQ(shown->questions.size(), 2u);
    EXPECT_THAT(VstFolders(), ::testing::Not(::testing::Contains(L"/my own")));
    EXPECT_THAT(VstFolders(), ::testing::Not(IsEmpty()));
    EXPECT_EQ(Folders(), VstFolders());
    zetcore::utility::SetClientName(L"zetaudiopluginmanager");
}

TEST_F(FolderCommands, DefaultResetsAfterYesAndNoOtherAnswer)
{
    AddFolders({L"/my own"});
    const auto own = VstFolders();
    OpenDialog();
    // The answers are: closed without an answer, OK, Cancel, and a button that does not exist.
    for (const int answer : {0, 1, 2, 64, 80, -1}) {
        shown->answer = answer;
        Press(ids::kDefaultDirectoriesButton);
        EXPECT_EQ(VstFolders(), own) << answer;
    }
    EXPECT_EQ(shown->questions.size(), 6u);
}

TEST_F(FolderCommands, DefaultAsksWhenThereIsAFolderWhateverTheListShows)
{
    AddFolders({L"/my own"});
    const auto own = VstFolders();
    OpenDialog();
    FolderList().RemoveAllRows();
    shown->answer = 64;
    Press(ids::kDefaultDirectoriesButton);
    EXPECT_EQ(shown->questions.size(), 1u);
    EXPECT_EQ(VstFolders(), own);
}

TEST_F(FolderCommands, TheButtonsChangeTheFoldersOfVstOnlyAndTheListIsFilledOnce)
{
    const auto vst3 = TheRegistry().GetPluginTechnology(3);
    const auto au = TheRegistry().GetPluginTechnology(4);
    AddFolders({L"/one", L"/two"});
    vst3->AddPluginDirectories({L"/one"});
    const std::vector<std::wstring> ofVst3(vst3->DirectoryBegin(), vst3->DirectoryEnd());
    OpenDialog();
    FillCount count(WidgetOf(FolderList()));
    shown->chosenFolder = ToWide(real);
    Press(ids::kAddDirectoryButton);
    EXPECT_EQ(count.Fills(), 1);
    ClickFolder(0);
    Press(ids::kRemoveDirectoryButton);
    EXPECT_EQ(count.Fills(), 1);
    EXPECT_THAT(VstFolders(), ElementsAre(ToWide("/two"), ToWide(real)));
    EXPECT_EQ(std::vector<std::wstring>(vst3->DirectoryBegin(), vst3->DirectoryEnd()), ofVst3);
    EXPECT_EQ(au->DirectoryBegin(), au->DirectoryEnd());
    shown->answer = 16;
    Press(ids::kDefaultDirectoriesButton);
    EXPECT_EQ(count.Fills(), 1);
}

TEST_F(FolderCommands, ARowThatIsNoneOfTheListsShowsAndRemovesNothing)
{
    AddFolders({L"/one", L"/two"});
    OpenDialog();
    const auto row = FolderList().GetRowAt(0);
    TheRegistry().GetPluginTechnology(2)->RemovePluginDirectories({L"/one"});
    ASSERT_THAT(Folders(), ElementsAre(ToWide("/two")));
    FolderList().AppendRow(row, nullptr, false);
    HandleEvents();
    EXPECT_THAT(Folders(), ElementsAre(ToWide("/two"), L"")) << "its folder went with it";
    int changes = 0;
    const zetcore::events::ScopedConnection connection =
        TheRegistry().GetPluginTechnology(2)->GetDirectoriesChangedSignal().Connect(
            [&changes](const auto&) { ++changes; });
    ClickFolder(1);
    ASSERT_TRUE(CanRemove());
    Press(ids::kRemoveDirectoryButton);
    EXPECT_EQ(changes, 0);
    EXPECT_THAT(VstFolders(), ElementsAre(ToWide("/two")));
}

TEST_F(FolderCommands, DefaultWithoutFoldersResetsAtOnceWithoutAsking)
{
    OpenDialog();
    ASSERT_THAT(Folders(), IsEmpty());
    Press(ids::kDefaultDirectoriesButton);
    EXPECT_TRUE(shown->questions.empty());
    EXPECT_THAT(Folders(), ::testing::Not(IsEmpty()));
    EXPECT_EQ(Folders(), VstFolders());
}

TEST_F(FolderCommands, DefaultLeavesTheFoldersOfOtherTechnologiesAsTheyAre)
{
    const auto vst3 = TheRegistry().GetPluginTechnology(3);
    vst3->AddPluginDirectories({L"/my own"});
    const std::vector<std::wstring> own(vst3->DirectoryBegin(), vst3->DirectoryEnd());
    OpenDialog();
    Press(ids::kDefaultDirectoriesButton);
    EXPECT_TRUE(shown->questions.empty()) << "there is no VST folder to lose";
    EXPECT_THAT(VstFolders(), ::testing::Not(IsEmpty()));
    EXPECT_EQ(std::vector<std::wstring>(vst3->DirectoryBegin(), vst3->DirectoryEnd()), own);
    vst3->SetPluginDirectories({});
    shown->answer = 16;
    Press(ids::kDefaultDirectoriesButton);
    EXPECT_NE(vst3->DirectoryBegin(), vst3->DirectoryEnd()) << "one without any folder gets its defaults";
}

} // namespace
} // namespace zetaudiopluginhostui
