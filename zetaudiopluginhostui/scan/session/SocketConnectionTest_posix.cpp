#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>

#include <zetcore/utility/Backoff.h>
#include <zettesting/HostFixture.h>
#include <zettesting/Patience.h>
#include <zettransport/SocketTransport.h>

#include "scan/session/SocketConnection.h"
#include "testing/RawServer.h"

namespace zetaudiopluginhostui {
namespace {

std::ptrdiff_t ThreadCount()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                         std::filesystem::directory_iterator());
}

/// The system counts ended threads for a moment longer.
bool ThreadsBecome(std::ptrdiff_t count)
{
    return zettesting::Becomes([count] { return ThreadCount() == count; });
}

class SocketConnectionThreads : public zettesting::HostFixture
{};

TEST_F(SocketConnectionThreads, AreThoseOfATransportWithOne)
{
    RawServer server;
    // A sanitizer starts a thread of its own together with a program's first thread.
    std::thread([] {}).join();
    const std::ptrdiff_t without = ThreadCount();
    std::ptrdiff_t expected = 0;
    {
        const auto transport = zettransport::SocketTransport::Create(1);
        const auto session = transport->ClientStart("127.0.0.1", server.Port());
        ASSERT_NE(session, nullptr);
        expected = ThreadCount();
    }
    ASSERT_TRUE(ThreadsBecome(without));
    SocketConnection connection;
    ASSERT_TRUE(connection.Open(server.Port()));
    EXPECT_TRUE(ThreadsBecome(expected));
    // The threads of the old connection end with it.
    ASSERT_TRUE(connection.Open(server.Port()));
    EXPECT_TRUE(ThreadsBecome(expected));
    connection.Close();
    EXPECT_TRUE(ThreadsBecome(without));
}

} // namespace
} // namespace zetaudiopluginhostui
