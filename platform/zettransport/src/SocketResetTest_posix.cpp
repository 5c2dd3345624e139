#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>
#include <gmock/gmock.h>

#include "testing/SocketTransportFixture.h"

namespace zettransport {

namespace {

using boost::asio::ip::tcp;
using ::testing::ElementsAre;

class SocketResetTest : public SocketTransportFixture
{};

TEST_F(SocketResetTest, ReadsWhatHasArrivedAlthoughTheOtherSideIsGone)
{
    auto accepted = Listen();
    boost::asio::io_context context;
    tcp::socket raw(context);
    raw.connect({boost::asio::ip::address_v4::loopback(), port});
    farEnd = AwaitValue(std::move(accepted));
    boost::asio::write(raw, boost::asio::buffer(std::string("Content-Length: 4\r\n\r\nlast")));
    raw.close();
    // The first is answered with a reset, and a later one meets it.
    for (int i = 0; i < 1000; ++i)
        farEnd->Send("into the void");
    Record(*farEnd, log);
    EXPECT_THAT(log.Await(2), ElementsAre("last", "closed"));
}

} // namespace

} // namespace zettransport
