#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>

#include <zetcore/utility/Backoff.h>
#include <zettesting/HostFixture.h>
#include <zettransport/SocketTransport.h>

#include "scan/SocketConnection.h"
#include "testing/RawServer.h"

namespace zetaudiopluginhostui {
namespace {

std::ptrdiff_t ThreadCount()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                         std::filesystem::directory_iterator());
}

/// Threads that have ended are counted for a moment longer.
bool ThreadsBecome(std::ptrdiff_t count)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    for (zetcore::utility::Backoff pause; ThreadCount() != count; pause())
        if (std::chrono::steady_clock::now() > deadline)
            return false;
    return true;
}

class SocketConnectionThreads : public zettesting::HostFixture
{};

TEST_F(SocketConnectionThreads, AreThoseOfATransportWithOne)
{
    RawServer server;
    // A sanitizer starts a thread of its own with a program's first.
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
    // The old one's go with it.
    ASSERT_TRUE(connection.Open(server.Port()));
    EXPECT_TRUE(ThreadsBecome(expected));
    connection.Close();
    EXPECT_TRUE(ThreadsBecome(without));
}

} // namespace
} // namespace zetaudiopluginhostui
