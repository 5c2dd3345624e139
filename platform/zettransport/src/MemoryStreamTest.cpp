#include <zettransport/MemoryStream.h>

#include <future>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <zettesting/EventLog.h>
#include <zettesting/HostFixture.h>

namespace zettransport {

namespace {

using ::testing::ElementsAre;
using zettesting::EventLog;

class MemoryStreamTest : public zettesting::HostFixture
{
  protected:
    const std::thread::id testThread = std::this_thread::get_id();

    static void Record(ByteStream& stream, EventLog& log)
    {
        stream.Start([&log](std::string_view bytes) { log.Add(std::string(bytes)); },
                     [&log](std::error_code error) { log.Add(error ? "error" : "closed"); });
    }
};

TEST_F(MemoryStreamTest, DeliversToTheOtherEndInOrder)
{
    EventLog log;
    const auto [left, right] = CreateMemoryStreamPair();
    Record(*right, log);
    left->Write("one");
    left->Write("two");
    left->Close();
    EXPECT_THAT(log.Await(3), ElementsAre("one", "two", "closed"));
}

TEST_F(MemoryStreamTest, KeepsWhatArrivesBeforeTheStart)
{
    EventLog log;
    EventLog posted;
    const auto [left, right] = CreateMemoryStreamPair();
    left->Write("one");
    left->Write("two");
    left->Close();
    right->Post([&] { posted.Add("here"); });
    posted.Await(1);
    Record(*right, log);
    EXPECT_THAT(log.Await(2), ElementsAre("onetwo", "closed"));
}

TEST_F(MemoryStreamTest, AnEndThatIsDroppedClosesTheOther)
{
    EventLog log;
    auto [left, right] = CreateMemoryStreamPair();
    Record(*right, log);
    left.reset();
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
}

TEST_F(MemoryStreamTest, DeliversNothingAfterItsOwnClose)
{
    EventLog log;
    EventLog posted;
    const auto [left, right] = CreateMemoryStreamPair();
    Record(*right, log);
    right->Close();
    right->Close();
    left->Write("one");
    left->Close();
    right->Post([&] { posted.Add("last"); });
    posted.Await(1);
    EXPECT_THAT(log.Now(), ElementsAre());
}

TEST_F(MemoryStreamTest, RunsHandlersOnAThreadOfItsOwn)
{
    EventLog log;
    const auto [left, right] = CreateMemoryStreamPair();
    right->Start(
        [&](std::string_view) {
            log.Add(std::this_thread::get_id() == testThread ? "caller's thread" : "own thread");
        },
        [](std::error_code) {});
    left->Write("x");
    EXPECT_THAT(log.Await(1), ElementsAre("own thread"));
}

TEST_F(MemoryStreamTest, MayBeDestroyedInItsHandler)
{
    EventLog log;
    std::promise<void> released;
    auto [left, right] = CreateMemoryStreamPair();
    std::shared_ptr<void> guard(nullptr, [&log](void*) { log.Add("handlers dropped"); });
    right->Start(
        [&log, &released, held = right, dropped = std::move(guard)](std::string_view) mutable {
            released.get_future().wait();
            held.reset();
            log.Add("last reference gone");
        },
        [](std::error_code) {});
    right.reset();
    left->Write("x");
    left.reset();
    released.set_value();
    EXPECT_THAT(log.Await(2), ElementsAre("last reference gone", "handlers dropped"));
}

} // namespace

} // namespace zettransport
