#include <zetui/archiveddialog/UI_ArchivedDialog.h>

#include <stdexcept>

#include <zetcore/threads/MainThread.h>
#include <zetcore/utility/NullPtrException.h>
#include <zettesting/Patience.h>
#include <zetui/archives/NodeArchive.h>

#include <QApplication>
#include <QPushButton>
#include <QTest>

#include "testing/DialogFixture.h"

namespace zetui::ui {
namespace {

using dialogs::UI_DialogViewContainer;
using utility::MakeIntrusive;
using UI_ArchivedDialogTest = DialogFixture;
using ClassicSkinDialog = ClassicDialogFixture;

TEST_F(UI_ArchivedDialogTest, TakesTheArchiveOfTheSkin)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    EXPECT_EQ(dialog->GetNodeForID("OKButton")->UI_GetLocalRectF(true).width, 24);
}

TEST_F(ClassicSkinDialog, TakesTheArchiveOfTheSkin)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    EXPECT_EQ(dialog->GetNodeForID("OKButton")->UI_GetLocalRectF(true).width, 80);
}

TEST_F(UI_ArchivedDialogTest, AMissingArchiveIsAnErrorThatNamesIt)
{
    try {
        MakeIntrusive<TestDialog>(resources, WindowVariant(), true, "Nowhere");
        FAIL();
    } catch (const archive_error& error) {
        EXPECT_NE(std::string(error.what()).find("NOWHERE.V7"), std::string::npos) << error.what();
    }
}

TEST_F(UI_ArchivedDialogTest, AMalformedArchiveIsAnErrorThatNamesIt)
{
    try {
        MakeIntrusive<TestDialog>(resources, WindowVariant(), true, "Malformed");
        FAIL();
    } catch (const archive_error& error) {
        EXPECT_NE(std::string(error.what()).find("\"MALFORMED.V7\", line 2"), std::string::npos)
            << error.what();
    }
}

TEST_F(UI_ArchivedDialogTest, WithoutResourcesIsTheNullPointerError)
{
    EXPECT_THROW(MakeIntrusive<UI_ArchivedDialog>(nullptr, nullptr, "TestDialog", L"", WindowVariant(), true,
                                                  true, PointF(), NodeFactory(), false, 0U),
                 zetcore::utility::null_ptr_exception);
}

TEST_F(UI_ArchivedDialogTest, TheButtonsEndTheModalRun)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    EXPECT_EQ(Run(*dialog, [&] { QTest::mouseClick(dialog->Widget("OKButton"), Qt::LeftButton); }),
              UI_DialogViewContainer::kOK);
    EXPECT_FALSE(dialog->UI_IsShown());
    EXPECT_EQ(Run(*dialog, [&] { QTest::mouseClick(dialog->Widget("CancelButton"), Qt::LeftButton); }),
              UI_DialogViewContainer::kCancel);
    EXPECT_EQ(dialog->GetResult(), UI_DialogViewContainer::kCancel);
}

TEST_F(UI_ArchivedDialogTest, ReturnPressesTheButtonWithTheFocus)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    int pressed = 0;
    dynamic_cast<controls::UI_TextButton&>(*dialog->GetNodeForID("Long"))
        .NotifyWhenChanged(
            std::make_shared<std::function<void(UI_Message*)>>([&](UI_Message*) { ++pressed; }));
    EXPECT_EQ(Run(*dialog,
                  [&] {
                      dialog->GetNodeForID("Long")->UI_GainKeyboardFocus(kFocusChangeTab);
                      Key(Qt::Key_Return);
                      Key(Qt::Key_Enter);
                      EXPECT_EQ(pressed, 2);
                      EXPECT_TRUE(dialog->UI_IsShown());
                      dialog->GetNodeForID("CancelButton")->UI_GainKeyboardFocus(kFocusChangeTab);
                      Key(Qt::Key_Return);
                  }),
              UI_DialogViewContainer::kCancel);
    const auto another = MakeIntrusive<TestDialog>(resources);
    EXPECT_EQ(Run(*another,
                  [&] {
                      another->GetNodeForID("OKButton")->UI_GainKeyboardFocus(kFocusChangeTab);
                      Key(Qt::Key_Enter);
                  }),
              UI_DialogViewContainer::kOK);
}

TEST_F(UI_ArchivedDialogTest, KeysThatAreKeptDownAnswerNothing)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    int pressed = 0;
    dynamic_cast<controls::UI_TextButton&>(*dialog->GetNodeForID("Long"))
        .NotifyWhenChanged(
            std::make_shared<std::function<void(UI_Message*)>>([&](UI_Message*) { ++pressed; }));
    const auto hold = [](int key) {
        QKeyEvent repeated(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        QApplication::sendEvent(QApplication::focusWidget(), &repeated);
    };
    Run(*dialog, [&] {
        for (const char* id : {"Long", "Check", "Field"}) {
            dialog->GetNodeForID(id)->UI_GainKeyboardFocus(kFocusChangeTab);
            for (const int key : {int(Qt::Key_Return), int(Qt::Key_Enter), int(Qt::Key_Escape)}) {
                hold(key);
                EXPECT_FALSE(dialog->GetResult()) << id;
                EXPECT_TRUE(dialog->UI_IsShown()) << id;
            }
        }
        EXPECT_EQ(pressed, 0);
        Key(Qt::Key_Escape);
    });
}

TEST_F(UI_ArchivedDialogTest, TheButtonThatReturnPressesIsTheDefaultButton)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    const auto isDefault = [&](const char* id) {
        return dynamic_cast<QPushButton&>(*dialog->Widget(id)).isDefault();
    };
    Run(*dialog, [&] {
        dialog->GetNodeForID("Field")->UI_GainKeyboardFocus(kFocusChangeTab);
        EXPECT_TRUE(isDefault("OKButton"));
        dialog->GetNodeForID("Long")->UI_GainKeyboardFocus(kFocusChangeTab);
        EXPECT_TRUE(isDefault("Long"));
        EXPECT_FALSE(isDefault("OKButton"));
        dialog->GetNodeForID("Check")->UI_GainKeyboardFocus(kFocusChangeTab);
        EXPECT_FALSE(isDefault("Long"));
        EXPECT_TRUE(isDefault("OKButton"));
        Key(Qt::Key_Escape);
    });
}

TEST_F(UI_ArchivedDialogTest, ReturnIsOkWhereTheFocusIsOnNoButton)
{
    for (const char* id : {"Check", "Field"}) {
        const auto dialog = MakeIntrusive<TestDialog>(resources);
        EXPECT_EQ(Run(*dialog,
                      [&] {
                          dialog->GetNodeForID(id)->UI_GainKeyboardFocus(kFocusChangeTab);
                          Key(Qt::Key_Return);
                      }),
                  UI_DialogViewContainer::kOK)
            << id;
    }
}

TEST_F(UI_ArchivedDialogTest, ADisabledOkButtonIsNotPressed)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    dialog->GetNodeForID("OKButton")->UI_SetEnabled(false);
    EXPECT_EQ(Run(*dialog,
                  [&] {
                      Key(Qt::Key_Return);
                      EXPECT_TRUE(dialog->UI_IsShown());
                      Key(Qt::Key_Escape);
                  }),
              UI_DialogViewContainer::kCancel);
}

TEST_F(UI_ArchivedDialogTest, EscapeAndTheCloseButtonAreCancel)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    int pressed = 0;
    dynamic_cast<controls::UI_TextButton&>(*dialog->GetNodeForID("CancelButton"))
        .NotifyWhenChanged(
            std::make_shared<std::function<void(UI_Message*)>>([&](UI_Message*) { ++pressed; }));
    EXPECT_EQ(Run(*dialog, [&] { Key(Qt::Key_Escape); }), UI_DialogViewContainer::kCancel);
    EXPECT_EQ(Run(*dialog, [&] { dialog->Window()->close(); }), UI_DialogViewContainer::kCancel);
    EXPECT_EQ(pressed, 2);
}

TEST_F(UI_ArchivedDialogTest, WithoutACancelButtonEscapeClosesAllTheSame)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    dialog->SetCancelButton(nullptr);
    EXPECT_EQ(Run(*dialog, [&] { Key(Qt::Key_Escape); }), UI_DialogViewContainer::kCancel);
}

TEST_F(UI_ArchivedDialogTest, AnotherResponseIsReturned)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    int calledWith = -1;
    int calls = 0;
    dialog->SetPostCloseCallback([&](int response) {
        calledWith = response;
        ++calls;
        return true;
    });
    EXPECT_EQ(Run(*dialog,
                  [&] {
                      dialog->Close(7);
                      dialog->Close(8);
                  }),
              7);
    EXPECT_EQ(calledWith, 7);
    EXPECT_EQ(calls, 1);
}

TEST_F(UI_ArchivedDialogTest, PostCloseIsOk)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    EXPECT_EQ(Run(*dialog, [&] { dialog->PostClose(); }), UI_DialogViewContainer::kOK);
    dialog->PostClose();
    dialog->Close(5);
    EXPECT_EQ(dialog->GetResult(), UI_DialogViewContainer::kOK);
}

TEST_F(UI_ArchivedDialogTest, AModalPhaseDoesNotBlock)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    int closed = 0;
    dialog->SetPostCloseCallback([&](int) {
        ++closed;
        return true;
    });
    dialog->BeginModal();
    EXPECT_TRUE(dialog->UI_IsShown());
    bool called = false;
    zetcore::threads::AsyncCallFromMainThread([&] { called = true; }, 0);
    dialog->ModalDuring();
    EXPECT_TRUE(called);
    dialog->EndModal();
    EXPECT_FALSE(dialog->UI_IsShown());
    EXPECT_EQ(closed, 0);
}

TEST_F(UI_ArchivedDialogTest, PostedCallsRunWhileItIsOpen)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    zetcore::threads::AsyncCallFromMainThread([&] { dialog->Close(3); }, 0);
    EXPECT_EQ(dialog->RunModal(), 3);
}

TEST_F(UI_ArchivedDialogTest, AnExceptionOfAHandlerEndsTheRunAndComesOut)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    dynamic_cast<controls::UI_TextButton&>(*dialog->GetNodeForID("Long"))
        .NotifyWhenChanged(std::make_shared<std::function<void(UI_Message*)>>(
            [](UI_Message*) { throw std::runtime_error("handler"); }));
    EXPECT_THROW(Run(*dialog, [&] { QTest::mouseClick(dialog->Widget("Long"), Qt::LeftButton); }),
                 std::runtime_error);
    EXPECT_FALSE(dialog->UI_IsShown());
}

TEST_F(UI_ArchivedDialogTest, AnExceptionWhileItOpensComesOut)
{
    class Failing : public TestDialog
    {
      public:
        using TestDialog::TestDialog;
        void UI_SizeChanged(const RectF&) override { throw std::runtime_error("size"); }
    };
    const auto dialog = MakeIntrusive<Failing>(resources);
    EXPECT_THROW(dialog->RunModal(), std::runtime_error);
    EXPECT_FALSE(dialog->UI_IsShown());
}

TEST_F(UI_ArchivedDialogTest, TabGoesAsOneReads)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    Run(*dialog, [&] {
        std::vector<std::string> order;
        for (int i = 0; i < 6; ++i) {
            order.push_back(dialog->Focus()->objectName().toStdString());
            Key(Qt::Key_Tab);
        }
        EXPECT_EQ(order,
                  (std::vector<std::string>{"Long", "Check", "Field", "OKButton", "CancelButton", "Long"}));
        dialog->Close(0);
    });
}

TEST_F(UI_ArchivedDialogTest, TheFirstFocusIsTheFirstOfTheTabOrderUnlessSet)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    EXPECT_EQ(dialog->GetFirstFocusNode().get(), dialog->GetNodeForID("Long").get());
    dialog->GetNodeForID("Long")->UI_SetEnabled(false);
    dialog->GetNodeForID("Check")->UI_Hide(true);
    EXPECT_EQ(dialog->GetFirstFocusNode().get(), dialog->GetNodeForID("Field").get());
    dialog->SetFirstFocusNode(dialog->GetNodeForID("OKButton"));
    Run(*dialog, [&] {
        EXPECT_EQ(dialog->Focus(), dialog->Widget("OKButton"));
        dialog->Close(0);
    });
}

TEST_F(UI_ArchivedDialogTest, AFocusGivenBeforehandStays)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    dialog->GetNodeForID("Field")->UI_GainKeyboardFocus(kFocusChangeProgram);
    Run(*dialog, [&] {
        EXPECT_EQ(dialog->Focus(), dialog->Widget("Field"));
        dialog->Close(0);
    });
}

TEST_F(UI_ArchivedDialogTest, AWindowOfOursIsBlockedMeanwhile)
{
    QWidget host;
    QPushButton inHost(&host);
    int clicks = 0;
    QObject::connect(&inHost, &QPushButton::clicked, [&] { ++clicks; });
    host.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&host, zettesting::patienceInMilliseconds));
    const WindowVariant parent(reinterpret_cast<HWND>(host.winId()));
    const auto dialog = MakeIntrusive<TestDialog>(resources, parent);
    EXPECT_EQ(dialog->Window()->parentWidget(), &host);
    Run(*dialog, [&] {
        QTest::mouseClick(host.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
        dialog->Close(0);
    });
    EXPECT_EQ(clicks, 0);
    QTest::mouseClick(host.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(clicks, 1);
}

TEST_F(UI_ArchivedDialogTest, AParentThatIsGoneTakesTheWindowAlong)
{
    auto host = std::make_unique<QWidget>();
    const WindowVariant parent(reinterpret_cast<HWND>(host->winId()));
    const auto dialog = MakeIntrusive<TestDialog>(resources, parent);
    EXPECT_EQ(Run(*dialog, [&] { host.reset(); }), UI_DialogViewContainer::kCancel);
    EXPECT_FALSE(dialog->UI_IsShown());
    EXPECT_EQ(dialog->GetNativeWindow(), nullptr);
    EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kCancel);
    dialog->UI_Show(true);
    dialog->UI_SetGlobalStructureRect({0, 0, 10, 10}, true);
    EXPECT_EQ(dialog->UI_GetGlobalStructureRect(), UI_ArchivedDialog::RectI());
    EXPECT_FALSE(dialog->GetFirstFocusNode());
}

TEST_F(UI_ArchivedDialogTest, AForeignParentThatDoesNotExistIsHarmless)
{
    const WindowVariant parent(reinterpret_cast<HWND>(std::uintptr_t{0x7654321}));
    const auto dialog = MakeIntrusive<TestDialog>(resources, parent);
    EXPECT_EQ(Run(*dialog, [&] { dialog->PostClose(); }), UI_DialogViewContainer::kOK);
}

TEST_F(UI_ArchivedDialogTest, ItMayBeDroppedByItsOwnButton)
{
    auto dialog = MakeIntrusive<TestDialog>(resources);
    dialog->SetPostCloseCallback([&](int) {
        dialog = nullptr;
        return true;
    });
    dialog->UI_Show(true);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog->Window(), zettesting::patienceInMilliseconds));
    QTest::mouseClick(dialog->Widget("OKButton"), Qt::LeftButton);
    EXPECT_FALSE(dialog);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (const QWidget* const widget : QApplication::topLevelWidgets())
        EXPECT_FALSE(widget->isVisible());
}

TEST_F(UI_ArchivedDialogTest, ItHasANativeWindowAndATitle)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    EXPECT_NE(dialog->GetNativeWindow(), nullptr);
    EXPECT_EQ(dialog->Window()->windowTitle(), QStringLiteral("Title"));
    EXPECT_EQ(dialog->GetSupplier(), nullptr);
}

TEST_F(UI_ArchivedDialogTest, ASecondRunOfAnOpenDialogIsRefused)
{
    const auto dialog = MakeIntrusive<TestDialog>(resources);
    Run(*dialog, [&] {
        EXPECT_THROW(dialog->RunModal(), std::logic_error);
        dialog->Close(0);
    });
}

} // namespace
} // namespace zetui::ui
