#include <zettesting/Patience.h>
#include <zetui/archiveddialog/UI_ArchivedDialog.h>

#include <QScreen>

#include "testing/DialogFixture.h"

namespace zetui::ui {
namespace {

using utility::MakeIntrusive;
using DialogSize = DialogFixture;
using DialogSizeClassic = ClassicDialogFixture;

TEST_F(DialogSize, ItsPlaceIsSetAndRead)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    dialog->UI_SetGlobalStructureRect({100, 120, 700, 300}, true);
    EXPECT_EQ(dialog->UI_GetGlobalStructureRect(), (UI_ArchivedDialog::RectI{100, 120, 700, 300}));
    dialog->UI_Show(true);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog->Window(), zettesting::patienceInMilliseconds));
    EXPECT_EQ(dialog->UI_GetGlobalStructureRect(), (UI_ArchivedDialog::RectI{100, 120, 700, 300}));
    dialog->UI_Show(false);
}

TEST_F(DialogSize, APlaceOffTheScreenIsBroughtBackWhenAsked)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    dialog->UI_SetGlobalStructureRect({-5000, -5000, 500, 300}, false);
    EXPECT_EQ(dialog->UI_GetGlobalStructureRect().left, -5000);
    dialog->UI_SetGlobalStructureRect({-5000, -5000, 500, 300}, true);
    const auto rect = dialog->UI_GetGlobalStructureRect();
    EXPECT_TRUE(QApplication::primaryScreen()->availableGeometry().contains(
        QRect(rect.left, rect.top, rect.width, rect.height)));
}

TEST_F(DialogSize, ASizeWithoutExtentIsNotTaken)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    const auto before = dialog->UI_GetGlobalStructureRect();
    dialog->UI_SetGlobalStructureRect({0, 0, 0, 100}, true);
    dialog->UI_SetGlobalStructureRect({0, 0, 100, -1}, true);
    EXPECT_EQ(dialog->UI_GetGlobalStructureRect(), before);
}

TEST_F(DialogSize, ItDoesNotBecomeSmallerThanItsMinimum)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    dialog->SetMinimumSize(400, 350);
    dialog->UI_SetGlobalStructureRect({10, 40, 100, 100}, true);
    EXPECT_EQ(dialog->UI_GetGlobalStructureRect(), (UI_ArchivedDialog::RectI{10, 40, 400, 350}));
}

TEST_F(DialogSize, ADialogThatIsNotResizableKeepsItsSize)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources, WindowVariant(), false);
    const auto before = dialog->UI_GetGlobalStructureRect();
    dialog->UI_SetGlobalStructureRect({10, 40, 900, 700}, true);
    const auto after = dialog->UI_GetGlobalStructureRect();
    EXPECT_EQ(after.width, before.width);
    EXPECT_EQ(after.height, before.height);
}

TEST_F(DialogSize, EachNewSizeIsReportedOnceAndLaidOut)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    dialog->UI_SetGlobalStructureRect({50, 50, 800, 400}, true);
    EXPECT_EQ(dialog->sizes, (std::vector<UI_Node::RectF>{{0, 0, 800, 400}}));
    dialog->UI_Show(true);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog->Window(), zettesting::patienceInMilliseconds));
    EXPECT_EQ(dialog->sizes.size(), 1U);
    dialog->Window()->resize(900, 450);
    EXPECT_TRUE(WaitUntil([&] { return dialog->sizes.size() == 2; }));
    EXPECT_EQ(dialog->GetRootView()->UI_GetLocalRectF(true), (UI_Node::RectF{0, 0, 900, 450}));
    const auto list = dialog->GetNodeForID("List")->UI_GetLocalRectF(true);
    const auto buttons = dialog->GetNodeForID("Buttons")->UI_GetLocalRectF(true);
    EXPECT_EQ(list.width, 900);
    EXPECT_EQ(buttons.top, list.top + list.height + 6);
    dialog->UI_Show(false);
}

TEST_F(DialogSize, TheFirstSizeIsReportedWhenItIsShown)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    EXPECT_TRUE(dialog->sizes.empty());
    dialog->UI_Show(true);
    EXPECT_TRUE(WaitUntil([&] { return dialog->sizes.size() == 1; }));
    dialog->UI_Show(false);
}

/// Texts fit into their controls, controls into their views, and none lies on another.
void ExpectNothingCutNorOverlapping(const UI_SubView& view)
{
    const auto size = view.UI_GetLocalRectF(false);
    for (std::size_t i = 0; i < view.ChildCount(); ++i) {
        const UI_Node& child = *view.GetChild(i);
        const auto frame = child.UI_GetLocalRectF(true);
        const QSizeF needed = NodeAccess::NeededSize(&child);
        EXPECT_GE(frame.width, needed.width()) << child.UI_GetID();
        EXPECT_GE(frame.height, needed.height()) << child.UI_GetID();
        EXPECT_LE(frame.left + frame.width, size.width) << child.UI_GetID();
        EXPECT_LE(frame.top + frame.height, size.height) << child.UI_GetID();
        for (std::size_t j = 0; j < i; ++j) {
            const auto other = view.GetChild(j)->UI_GetLocalRectF(true);
            const bool apart = frame.left + frame.width <= other.left ||
                               other.left + other.width <= frame.left ||
                               frame.top + frame.height <= other.top || other.top + other.height <= frame.top;
            EXPECT_TRUE(apart) << child.UI_GetID() << " and " << view.GetChild(j)->UI_GetID();
        }
        if (const auto* const inner = dynamic_cast<const UI_SubView*>(&child))
            ExpectNothingCutNorOverlapping(*inner);
    }
}

TEST_F(DialogSize, ItGrowsForItsTexts)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    ExpectNothingCutNorOverlapping(*dialog->GetRootView());
    EXPECT_GT(dialog->UI_GetGlobalStructureRect().width, 300);
    EXPECT_EQ(dialog->GetNodeForID("OKButton")->UI_GetLocalRectF(true).width, 24);
    const float width = dialog->GetRootView()->UI_GetLocalRectF(false).width;
    EXPECT_EQ(dialog->GetNodeForID("List")->UI_GetLocalRectF(true).width, width);
}

TEST_F(DialogSizeClassic, ItGrowsForItsTextsInAnyLanguage)
{
    const auto english = MakeIntrusive<TestDialog>(resources);
    ExpectNothingCutNorOverlapping(*english->GetRootView());
    zetcore::config::Localizer::Get().LoadTableFromText(
        "\"$$$/Test/Dialog/Check\"=\"Vorhandene Zusatzmodule erneut untersuchen\"\n"
        "\"$$$/Test/Dialog/Cancel\"=\"Vorgang ohne Speichern abbrechen\"\n",
        "test");
    const auto german = MakeIntrusive<TestDialog>(resources);
    ExpectNothingCutNorOverlapping(*german->GetRootView());
    EXPECT_GT(german->UI_GetGlobalStructureRect().width, english->UI_GetGlobalStructureRect().width);
}

TEST_F(DialogSizeClassic, AHiddenControlGetsNoRoomForItsTextAndShownAgainItDoes)
{
    zetcore::config::Localizer::Get().LoadTableFromText(
        "\"$$$/Test/Dialog/Check\"=\"A text that needs far more room than the archive has given it\"\n",
        "test");
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    const auto check = dialog->GetNodeForID("Check");
    const auto framesOf = [&] {
        std::vector<UI_Node::RectF> frames{dialog->GetRootView()->UI_GetLocalRectF(true)};
        for (const char* const id :
             {"Check", "Field", "Strip", "List", "Buttons", "OKButton", "CancelButton"})
            frames.push_back(dialog->GetNodeForID(id)->UI_GetLocalRectF(true));
        return frames;
    };
    const auto shown = framesOf();
    check->UI_Hide(true);
    dialog->FitToTexts();
    EXPECT_LT(dialog->UI_GetGlobalStructureRect().width, static_cast<int>(shown.front().width) - 50);
    EXPECT_LT(check->UI_GetLocalRectF(true).width, shown[1].width - 50) << "its archived width";
    check->UI_Show(true);
    dialog->FitToTexts();
    EXPECT_EQ(framesOf(), shown);
    ExpectNothingCutNorOverlapping(*dialog->GetRootView());
}

} // namespace
} // namespace zetui::ui
