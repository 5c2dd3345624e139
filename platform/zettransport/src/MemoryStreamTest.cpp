#include <zettransport/MemoryStream.h>

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
    auto [left, right] = CreateMemoryStreamPair();
    auto held = std::make_shared<std::pair<std::shared_ptr<ByteStream>, std::shared_ptr<ByteStream>>>(
        std::move(left), std::move(right));
    ByteStream& writer = *held->first;
    held->second->Start(
        [&log, held](std::string_view) mutable {
            held->first.reset();
            held->second.reset();
            log.Add("destroyed");
        },
        [](std::error_code) {});
    writer.Write("x");
    EXPECT_THAT(log.Await(1), ElementsAre("destroyed"));
}

} // namespace

} // namespace zettransport
