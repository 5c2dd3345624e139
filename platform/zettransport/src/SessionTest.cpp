#include <zettransport/Session.h>

#include <atomic>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <zetcore/debug/Trace.h>
#include <zettesting/EventLog.h>
#include <zettesting/HostFixture.h>
#include <zettesting/Patience.h>
#include <zettransport/MemoryStream.h>

namespace zettransport {

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using zettesting::EventLog;

/// A session, and the bare stream at its other end.
class SessionTest : public zettesting::HostFixture
{
  protected:
    SessionTest()
    {
        zetcore::debug::SetMasterTraceVolume(9);
        auto [nearEnd, farEnd] = CreateMemoryStreamPair();
        session = Session::Create(std::move(nearEnd));
        other = std::move(farEnd);
    }

    /// No handler may run any more when the log is destroyed.
    ~SessionTest() override
    {
        if (session)
            session->Close();
        Settle(*other);
    }

    void StartRecording()
    {
        session->Start([this](const std::string& frame) { log.Add(frame); });
    }

    void RecordClose(const std::string& event)
    {
        session->SetCloseCallback([this, event](const std::shared_ptr<Session>& closed) {
            log.Add(closed == session ? event : "another session");
            return 0;
        });
    }

    /// Returns when all that was posted before has run.
    static void Settle(ByteStream& stream)
    {
        auto done = std::make_shared<std::promise<void>>();
        stream.Post([done] { done->set_value(); });
        ASSERT_EQ(done->get_future().wait_for(zettesting::patience), std::future_status::ready);
    }

    EventLog log;
    std::shared_ptr<Session> session;
    std::shared_ptr<ByteStream> other;
};

TEST_F(SessionTest, DeliversFramesThatArriveByteByByte)
{
    StartRecording();
    for (const char byte : std::string("Content-Length: 2\r\n\r\nabcontent-length: 1\r\nX: y\r\n\r\nc"))
        other->Write(std::string(1, byte));
    EXPECT_THAT(log.Await(2), ElementsAre("ab", "c"));
}

TEST_F(SessionTest, SendsAFrameInOneWrite)
{
    other->Start([this](std::string_view bytes) { log.Add(std::string(bytes)); }, [](std::error_code) {});
    EXPECT_TRUE(session->Send("hello"));
    EXPECT_THAT(log.Await(1), ElementsAre("Content-Length: 5\r\n\r\nhello"));
}

TEST_F(SessionTest, RefusesToSendAFrameThatIsTooLarge)
{
    const std::string largest(Session::maxFrameBytes, 'x');
    EXPECT_FALSE(session->Send(largest + "x"));
    EXPECT_TRUE(session->IsOpen());
    EXPECT_TRUE(session->Send(largest));
}

TEST_F(SessionTest, ClosesForAFrameOfFourGigabytesBeforeReadingIt)
{
    RecordClose("closed");
    StartRecording();
    other->Write("Content-Length: 4294967296\r\n\r\n");
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
    EXPECT_FALSE(session->IsOpen());
    EXPECT_FALSE(session->Send("x"));
    EXPECT_THAT(*traceLines, Contains(HasSubstr("a frame of 4294967296 bytes is larger than the limit")));
}

TEST_F(SessionTest, ClosesForGarbageAndDeliversNothingAfterIt)
{
    RecordClose("closed");
    StartRecording();
    other->Write("Content-Length: 1\r\n\r\naGET / HTTP/1.1\r\n\r\nContent-Length: 1\r\n\r\nb");
    other->Write("Content-Length: 1\r\n\r\nb");
    EXPECT_THAT(log.Await(2), ElementsAre("a", "closed"));
    Settle(*other);
    EXPECT_THAT(log.Now(), ElementsAre("a", "closed"));
}

TEST_F(SessionTest, ClosesForAnEndlessHeader)
{
    RecordClose("closed");
    StartRecording();
    for (int i = 0; i < 200; ++i)
        other->Write("X-Header: 0123456789abcdef\r\n");
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
    EXPECT_THAT(*traceLines, Contains(HasSubstr("header is longer than the limit of 4096 bytes")));
}

TEST_F(SessionTest, CallsTheCloseCallbackOnceWhenTheOtherSideCloses)
{
    RecordClose("closed");
    StartRecording();
    other->Close();
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
    session->Abort("too late");
    session->Close();
    RecordClose("again");
    Settle(*other);
    EXPECT_THAT(log.Now(), ElementsAre("closed"));
}

TEST_F(SessionTest, CallsACloseCallbackThatIsRegisteredAfterTheClose)
{
    StartRecording();
    other->Close();
    Settle(*other);
    ASSERT_FALSE(session->IsOpen());
    const std::thread::id ours = std::this_thread::get_id();
    session->SetCloseCallback([&, ours](const std::shared_ptr<Session>&) {
        log.Add(std::this_thread::get_id() == ours ? "inside the call" : "on a thread of the stream");
        return 0;
    });
    EXPECT_THAT(log.Await(1), ElementsAre("on a thread of the stream"));
}

TEST_F(SessionTest, DoesNotCallBackWhenWeCloseIt)
{
    RecordClose("closed");
    StartRecording();
    session->Close();
    other->Write("Content-Length: 1\r\n\r\na");
    other->Close();
    Settle(*other);
    EXPECT_THAT(log.Now(), IsEmpty());
    EXPECT_FALSE(session->IsOpen());
}

TEST_F(SessionTest, DoesNotCallBackWhenWeCloseItBeforeTheCallbackIsRegistered)
{
    StartRecording();
    other->Close();
    Settle(*other);
    session->Close();
    RecordClose("closed");
    Settle(*other);
    EXPECT_THAT(log.Now(), IsEmpty());
}

TEST_F(SessionTest, AbortTracesTheReasonAndCallsBackOutsideTheCall)
{
    StartRecording();
    std::mutex ours;
    session->SetCloseCallback([&](const std::shared_ptr<Session>&) {
        ours.lock();
        ours.unlock();
        log.Add("closed");
        return 0;
    });
    {
        const std::lock_guard lock(ours);
        session->Abort("enough");
        EXPECT_FALSE(session->IsOpen());
    }
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
    EXPECT_THAT(*traceLines, Contains(HasSubstr("Session closed: enough")));
}

TEST_F(SessionTest, MayBeClosedInItsHandler)
{
    RecordClose("closed");
    session->Start([this](const std::string& frame) {
        session->Close();
        log.Add(frame);
    });
    other->Write("Content-Length: 1\r\n\r\naContent-Length: 1\r\n\r\nb");
    EXPECT_THAT(log.Await(1), ElementsAre("a"));
    Settle(*other);
    EXPECT_THAT(log.Now(), ElementsAre("a"));
}

TEST_F(SessionTest, MayBeDestroyedInItsHandler)
{
    std::weak_ptr<Session> weak = session;
    session->Start([this](const std::string& frame) {
        session.reset();
        log.Add(frame);
    });
    other->Start([](std::string_view) {}, [this](std::error_code) { log.Add("other end closed"); });
    other->Write("Content-Length: 1\r\n\r\na");
    EXPECT_THAT(log.Await(2), ElementsAre("a", "other end closed"));
    EXPECT_TRUE(weak.expired());
}

TEST_F(SessionTest, AbortsWhenAHandlerThrows)
{
    RecordClose("closed");
    session->Start([](const std::string&) { throw std::runtime_error("Bad thing"); });
    other->Write("Content-Length: 1\r\n\r\na");
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
    EXPECT_THAT(*traceLines, Contains(HasSubstr("Bad thing")));
}

TEST_F(SessionTest, SurvivesACloseCallbackThatThrows)
{
    session->SetCloseCallback([this](const std::shared_ptr<Session>&) -> TransportError {
        log.Add("closed");
        throw std::runtime_error("Bad thing");
    });
    StartRecording();
    other->Close();
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
    Settle(*other);
    EXPECT_THAT(*traceLines, Contains(HasSubstr("Bad thing")));
}

TEST_F(SessionTest, StartsOnlyOnce)
{
    StartRecording();
    EXPECT_THROW(StartRecording(), std::logic_error);
    EXPECT_THROW(Session::Create(nullptr), std::invalid_argument);
}

TEST_F(SessionTest, CallsBackAtMostOnceHoweverClosesRace)
{
    for (int i = 0; i < 500; ++i) {
        auto [nearEnd, farEnd] = CreateMemoryStreamPair();
        const auto raced = Session::Create(nearEnd);
        std::atomic<int> calls = 0;
        raced->Start([](const std::string&) {});
        const auto callback = [&](const std::shared_ptr<Session>&) {
            ++calls;
            return 0;
        };
        const bool weClose = i % 2 == 0;
        std::thread closing([&] {
            if (weClose)
                raced->Close();
            else
                raced->SetCloseCallback(callback);
        });
        std::thread aborting([&] { raced->Abort("race"); });
        farEnd->Close();
        if (weClose)
            raced->SetCloseCallback(callback);
        closing.join();
        aborting.join();
        Settle(*nearEnd);
        Settle(*nearEnd);
        EXPECT_FALSE(raced->IsOpen());
        if (weClose) {
            EXPECT_LE(calls, 1);
        } else {
            EXPECT_EQ(calls, 1);
        }
        const int before = calls;
        raced->SetCloseCallback(callback);
        Settle(*nearEnd);
        EXPECT_EQ(calls, before);
    }
}

} // namespace

} // namespace zettransport
