#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>
#include <gmock/gmock.h>

#include "testing/SocketTransportFixture.h"

namespace zettransport {

namespace {

using boost::asio::ip::tcp;

class SocketResetTest : public SocketTransportFixture
{};

TEST_F(SocketResetTest, ClosesWhenTheOtherSideIsGone)
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
    // The system decides if the last frame comes, because a reset throws away what has not been read.
    Record(*farEnd, log);
    for (std::size_t events = 1; log.Await(events).size() == events && log.Now().back() != "closed";)
        ++events;
    EXPECT_EQ(log.Now().back(), "closed");
}

} // namespace

} // namespace zettransport
