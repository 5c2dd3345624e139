#include "SocketOwners.h"

#include <gtest/gtest.h>

namespace zettransport {

namespace {

using boost::asio::ip::make_address;
using boost::asio::ip::tcp;

constexpr char table[] = R"(
  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout inode
   0: 00000000:07E8 00000000:0000 0A 00000000:00000000 00:00000000 00000000     0        0 1590 1 0 100
   1: 0100007F:C350 0100007F:1F90 01 00000000:00000000 00:00000000 00000000  1000        0 77 1 0 20
   2: 0100007F:1F90 0100007F:C350 01 00000000:00000000 00:00000000 00000000    33        0 78 1 0 20
garbage
   3: XYZ:1 0100007F:1F90 01 00000000:00000000 00:00000000 00000000  1 0 77 1 0 20
   4: 0100007F:C351 0100007F:1F90 01 00000000:00000000 00:00000000 00000000  nobody 0 77 1 0 20
   5: 0000000000000000FFFF00000100007F:C352 0000000000000000FFFF00000100007F:1F90 01 0:0 00:0 0  500 0 79
   6: 00000000000000000000000001000000:C353 00000000000000000000000001000000:1F90 01 0:0 00:0 0  600 0 80
   7: 0100007F:C354 0100007F:1F90 06 00000000:00000000 03:00000F2B 00000000     0        0 0 3 0)";

tcp::endpoint End(const char* address, unsigned port)
{
    return {make_address(address), static_cast<std::uint16_t>(port)};
}

TEST(SocketOwners, FindsTheUserOfEachEnd)
{
    EXPECT_EQ(FindSocketOwner(table, End("127.0.0.1", 50000), End("127.0.0.1", 8080)), 1000u);
    EXPECT_EQ(FindSocketOwner(table, End("127.0.0.1", 8080), End("127.0.0.1", 50000)), 33u);
}

TEST(SocketOwners, FindsIPv4AddressesInTheirIPv6Form)
{
    EXPECT_EQ(FindSocketOwner(table, End("127.0.0.1", 50002), End("127.0.0.1", 8080)), 500u);
}

TEST(SocketOwners, FindsIPv6Addresses)
{
    EXPECT_EQ(FindSocketOwner(table, End("::1", 50003), End("::1", 8080)), 600u);
}

TEST(SocketOwners, FindsNoOwnerOfASocketWithoutProcess)
{
    EXPECT_FALSE(FindSocketOwner(table, End("127.0.0.1", 50004), End("127.0.0.1", 8080)));
}

TEST(SocketOwners, FindsNothingForOtherConnectionsAndUnreadableLines)
{
    EXPECT_FALSE(FindSocketOwner(table, End("127.0.0.2", 50000), End("127.0.0.1", 8080)));
    EXPECT_FALSE(FindSocketOwner(table, End("127.0.0.1", 50000), End("127.0.0.1", 8081)));
    EXPECT_FALSE(FindSocketOwner(table, End("127.0.0.1", 50001), End("127.0.0.1", 8080)));
    EXPECT_FALSE(FindSocketOwner("", End("127.0.0.1", 50000), End("127.0.0.1", 8080)));
}

TEST(SocketOwners, TheOtherEndMayBeOursUnlessAnotherUserHasItOrNobodyAnyMore)
{
    EXPECT_TRUE(MayOwnOtherEnd(1000, table, End("127.0.0.1", 8080), End("127.0.0.1", 50000)));
    EXPECT_FALSE(MayOwnOtherEnd(33, table, End("127.0.0.1", 8080), End("127.0.0.1", 50000)));
    EXPECT_FALSE(MayOwnOtherEnd(500, table, End("127.0.0.1", 50002), End("127.0.0.1", 8080)));
    EXPECT_TRUE(MayOwnOtherEnd(1000, table, End("127.0.0.1", 8080), End("127.0.0.1", 50009)));
    EXPECT_TRUE(MayOwnOtherEnd(1000, "", End("127.0.0.1", 8080), End("127.0.0.1", 50000)));
}

} // namespace

} // namespace zettransport
