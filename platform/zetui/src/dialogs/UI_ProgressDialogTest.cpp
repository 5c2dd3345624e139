#include <zetui/dialogs/UI_ProgressDialog.h>

#include <functional>
#include <thread>
#include <utility>
#include <vector>

#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zettesting/HostFixture.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetui::dialogs {
namespace {

/// Notes what was shown, and does what the user would do.
class Recorder : public Presentation
{
  public:
    struct Log
    {
        std::vector<std::string> calls;
        std::function<bool(bool wait)> onEvents;
    };

    std::unique_ptr<ProgressPresentation> CreateProgress(ui::WindowVariant) override
    {
        return std::make_unique<Progress>(log);
    }
    void ShowAlert(AlertKind, const std::string&, const std::string&, ui::WindowVariant) override {}

    std::shared_ptr<Log> log = std::make_shared<Log>();

  private:
    class Progress : public ProgressPresentation
    {
      public:
        explicit Progress(std::shared_ptr<Log> shared) : log(std::move(shared)) {}
        void Show(const std::string& title, const std::string& text, bool cancellable) override
        {
            log->calls.push_back("show " + title + "," + text + (cancellable ? ",cancellable" : ""));
        }
        void SetExtraText(const std::string& text) override { log->calls.push_back("extra " + text); }
        void SetProgress(unsigned long long progress, unsigned long long total,
                         const std::string& text) override
        {
            log->calls.push_back("progress " + std::to_string(progress) + "/" + std::to_string(total) + text);
        }
        void Finish() override { log->calls.push_back("finish"); }
        void Hide() override { log->calls.push_back("hide"); }
        bool ProcessEvents(bool wait) override
        {
            if (wait)
                zetcore::threads::RunQueuedCalls(std::chrono::steady_clock::time_point::max());
            return log->onEvents && log->onEvents(wait);
        }

      private:
        std::shared_ptr<Log> log;
    };
};

class ProgressDialog : public zettesting::HostFixture
{
  protected:
    ProgressDialog()
    {
        zetcore::threads::RegisterMainThread(std::make_shared<zetcore::threads::PlainEventLoop>());
        SetPresentation(recorder);
    }
    ~ProgressDialog() override { SetPresentation(nullptr); }

    static utility::IntrusivePtr<UI_ProgressDialog> Make(bool indeterminate = false,
                                                         bool closeWhenFull = false)
    {
        return utility::MakeIntrusive<UI_ProgressDialog>(nullptr, "Title", "", ui::WindowVariant(),
                                                         indeterminate, true, closeWhenFull);
    }

    std::shared_ptr<Recorder> recorder = std::make_shared<Recorder>();
    std::vector<std::string>& calls = recorder->log->calls;
};

using Calls = std::vector<std::string>;

TEST_F(ProgressDialog, ShowsWhatWasSetBeforeItWasShown)
{
    const auto dialog = Make();
    dialog->SetExtraText("extra");
    dialog->SetProgress(1, 2, "");
    EXPECT_EQ(calls, Calls{});
    dialog->UI_Show(true);
    EXPECT_EQ(calls, (Calls{"show Title,,cancellable", "extra extra", "progress 1/2"}));
}

TEST_F(ProgressDialog, StartsWithAnEmptyBarUnlessItIsIndeterminate)
{
    Make(false)->UI_Show(true);
    EXPECT_EQ(calls, (Calls{"show Title,,cancellable", "hide"}));
    calls.clear();
    Make(true)->UI_Show(true);
    EXPECT_EQ(calls, (Calls{"show Title,,cancellable", "progress 0/0", "hide"}));
}

TEST_F(ProgressDialog, TheModalPhaseShowsAndHidesWithoutCallback)
{
    int closed = 0;
    const auto dialog = Make();
    dialog->SetPostCloseCallback([&](UI_Dialog::Response) { return ++closed > 0; });
    dialog->UI_Show(true);
    dialog->BeginModal();
    EXPECT_TRUE(dialog->UI_IsShown());
    dialog->ModalDuring();
    dialog->EndModal();
    EXPECT_FALSE(dialog->UI_IsShown());
    EXPECT_EQ(closed, 0);
    EXPECT_EQ(calls, (Calls{"show Title,,cancellable", "finish", "hide"}));
}

TEST_F(ProgressDialog, ModalDuringCarriesOutWhatWasPosted)
{
    bool ran = false;
    const auto dialog = Make();
    dialog->BeginModal();
    zetcore::threads::AsyncCallFromMainThread([&] { ran = true; }, 0);
    dialog->ModalDuring();
    EXPECT_TRUE(ran);
    dialog->EndModal();
}

TEST_F(ProgressDialog, CancelInTheModalPhaseClosesItOnceWithTheCancelResponse)
{
    std::vector<UI_Dialog::Response> responses;
    const auto dialog = Make();
    dialog->SetPostCloseCallback([&](UI_Dialog::Response response) {
        responses.push_back(response);
        return false;
    });
    dialog->BeginModal();
    recorder->log->onEvents = [](bool) { return true; };
    dialog->ModalDuring();
    dialog->ModalDuring();
    dialog->EndModal();
    EXPECT_EQ(responses, std::vector<UI_Dialog::Response>{UI_DialogViewContainer::kCancel});
    EXPECT_EQ(calls, (Calls{"show Title,,cancellable", "hide"})) << "no full bar";
}

/// All that a presentation must have.
class IdlePresentation : public Presentation
{
  public:
    std::unique_ptr<ProgressPresentation> CreateProgress(ui::WindowVariant) override
    {
        return std::make_unique<Idle>();
    }
    void ShowAlert(AlertKind, const std::string&, const std::string&, ui::WindowVariant) override {}

  private:
    class Idle : public ProgressPresentation
    {
        void Show(const std::string&, const std::string&, bool) override {}
        void SetExtraText(const std::string&) override {}
        void SetProgress(unsigned long long, unsigned long long, const std::string&) override {}
        void Hide() override {}
        bool ProcessEvents(bool) override { return false; }
    };
};

TEST_F(ProgressDialog, APresentationThatDoesNothingDoesNotHangTheModalRun)
{
    SetPresentation(std::make_shared<IdlePresentation>());
    const auto dialog = Make();
    std::thread worker(
        [&dialog] { zetcore::threads::AsyncCallFromMainThread([&dialog] { dialog->PostClose(); }, 0); });
    EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kOK);
    worker.join();
}

TEST_F(ProgressDialog, ItDoesNotHangWithoutAnEventLoopEither)
{
    zetcore::threads::RegisterMainThread(nullptr);
    SetPresentation(std::make_shared<IdlePresentation>());
    const auto dialog = Make();
    zetcore::threads::AsyncCallFromMainThread([&dialog] { dialog->PostClose(); }, 0);
    EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kOK);
}

TEST_F(ProgressDialog, TheModalRunEndsWithTheOkResponseWhenAPostedCallClosesIt)
{
    std::vector<UI_Dialog::Response> responses;
    const auto dialog = Make();
    dialog->SetPostCloseCallback([&](UI_Dialog::Response response) {
        responses.push_back(response);
        return false;
    });
    zetcore::threads::AsyncCallFromMainThread([&] { dialog->PostClose(); }, 0);
    EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kOK);
    EXPECT_EQ(responses, std::vector<UI_Dialog::Response>{UI_DialogViewContainer::kOK});
    EXPECT_FALSE(dialog->UI_IsShown());
    EXPECT_EQ(calls, (Calls{"show Title,,cancellable", "finish", "hide"}));
}

TEST_F(ProgressDialog, TheModalRunEndsWithTheCancelResponseWhenTheUserCancels)
{
    const auto dialog = Make();
    recorder->log->onEvents = [](bool wait) { return wait; };
    EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kCancel);
    EXPECT_EQ(calls, (Calls{"show Title,,cancellable", "hide"})) << "no full bar";
}

TEST_F(ProgressDialog, ADialogThatIsTakenAwayWithoutAnEndHasNoFullBar)
{
    {
        const auto dialog = Make();
        dialog->BeginModal();
    }
    EXPECT_EQ(calls, (Calls{"show Title,,cancellable", "hide"}));
    calls.clear();
    // A posted call hides it while the cancel button is being dealt with.
    const auto dialog = Make();
    dialog->BeginModal();
    recorder->log->onEvents = [&](bool) {
        dialog->PostClose();
        dialog->UI_Show(false);
        return false;
    };
    dialog->ModalDuring();
    EXPECT_EQ(calls, (Calls{"show Title,,cancellable", "hide"}));
}

std::string Waited(std::chrono::seconds)
{
    return "still there";
}

TEST_F(ProgressDialog, PatienceIsShownBehindTheExtraText)
{
    const auto dialog = Make();
    dialog->SetPatience(std::chrono::seconds(0), Waited);
    dialog->BeginModal();
    dialog->ModalDuring();
    EXPECT_EQ(calls, Calls{"show Title,,cancellable"}) << "there is no text that could stay the same";
    dialog->SetExtraText("reverb");
    dialog->ModalDuring();
    dialog->SetExtraText("reverb");
    EXPECT_EQ(calls, (Calls{"show Title,,cancellable", "extra reverb", "extra reverb (still there)"}))
        << "the same text again does not take it away";
    dialog->SetExtraText("delay");
    EXPECT_EQ(calls.back(), "extra delay");
    dialog->ModalDuring();
    EXPECT_EQ(calls.back(), "extra delay (still there)");
    dialog->SetPatience(std::chrono::seconds(0), nullptr);
    EXPECT_EQ(calls.back(), "extra delay");
    dialog->ModalDuring();
    EXPECT_EQ(calls.back(), "extra delay");
    dialog->EndModal();
}

TEST_F(ProgressDialog, ACancelledDialogSaysNothingMore)
{
    const auto dialog = Make();
    dialog->SetPatience(std::chrono::seconds(0), Waited);
    dialog->SetExtraText("reverb");
    recorder->log->onEvents = [](bool) { return true; };
    EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kCancel);
    EXPECT_EQ(calls, (Calls{"show Title,,cancellable", "extra reverb", "hide"}));
}

TEST_F(ProgressDialog, PatienceGoesOnDuringTheModalRunAndEndsWithIt)
{
    const auto dialog = Make();
    std::vector<std::chrono::seconds> asked;
    dialog->SetPatience(std::chrono::seconds(0), [&](std::chrono::seconds unchanged) {
        asked.push_back(unchanged);
        zetcore::threads::AsyncCallFromMainThread([&] { dialog->PostClose(); }, 0);
        return "still there";
    });
    dialog->SetExtraText("reverb");
    EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kOK);
    EXPECT_EQ(asked, std::vector<std::chrono::seconds>{std::chrono::seconds(0)});
    EXPECT_EQ(calls, (Calls{"show Title,,cancellable", "extra reverb", "extra reverb (still there)", "finish",
                            "hide"}));
}

TEST_F(ProgressDialog, ACallThatIsPostedDuringTheModalRunMayUseTheModalPhaseItself)
{
    const auto dialog = Make();
    zetcore::threads::AsyncCallFromMainThread(
        [&] {
            dialog->PostClose();
            dialog->ModalDuring();
            dialog->UI_Show(false);
        },
        0);
    EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kOK);
}

TEST_F(ProgressDialog, CanBeRunAgainAfterItWasClosed)
{
    const auto dialog = Make();
    for (int run = 0; run < 2; ++run) {
        zetcore::threads::AsyncCallFromMainThread([&] { dialog->PostClose(); }, 0);
        EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kOK);
    }
}

TEST_F(ProgressDialog, PostCloseOfADialogThatIsNotShownDoesNothing)
{
    int closed = 0;
    const auto dialog = Make();
    dialog->SetPostCloseCallback([&](UI_Dialog::Response) { return ++closed > 0; });
    dialog->PostClose();
    dialog->BeginModal();
    dialog->EndModal();
    EXPECT_EQ(closed, 0);
}

TEST_F(ProgressDialog, AFullBarClosesItOnlyWhereThatWasAskedFor)
{
    const auto staysOpen = Make(false, false);
    staysOpen->BeginModal();
    staysOpen->SetProgress(2, 2, "");
    staysOpen->ModalDuring();
    EXPECT_TRUE(staysOpen->UI_IsShown());

    const auto closes = Make(false, true);
    closes->BeginModal();
    closes->SetProgress(1, 2, "");
    closes->ModalDuring();
    EXPECT_TRUE(closes->UI_IsShown());
    closes->SetProgress(2, 2, "");
    closes->ModalDuring();
    EXPECT_FALSE(closes->UI_IsShown());
}

} // namespace
} // namespace zetui::dialogs
