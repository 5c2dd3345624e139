#include "scan/launch/ScannerOutput_posix.h"

#include <array>
#include <string_view>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include "testing/ExternalScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

/// While this lives, this process's descriptor leads elsewhere. With -1 it is closed.
class Redirected
{
  public:
    // The copy gets a number above the standard ones, so that it does not take the number of a closed one.
    Redirected(int redirected, int target)
        : descriptor(redirected), before(::fcntl(redirected, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
    {
        if (target < 0)
            ::close(descriptor);
        else
            ::dup2(target, descriptor);
    }
    ~Redirected()
    {
        ::dup2(before, descriptor);
        ::close(before);
    }
    Redirected(const Redirected&) = delete;
    Redirected& operator=(const Redirected&) = delete;

  private:
    const int descriptor;
    const int before;
};

class ScannerOutputTest : public ExternalScanFixture
{
  protected:
    ScannerOutputTest() { EXPECT_EQ(::pipe2(errors.data(), O_CLOEXEC), 0); }
    ~ScannerOutputTest() override
    {
        for (const int end : errors)
            ::close(end);
    }
    static void Say(const ScannerOutput& output, std::string_view text)
    {
        EXPECT_EQ(::write(output.ScannerEnd(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void FillStandardError() const
    {
        EXPECT_EQ(::fcntl(errors[1], F_SETFL, O_NONBLOCK), 0);
        while (::write(errors[1], "full", 4) > 0) {
        }
        EXPECT_EQ(::fcntl(errors[1], F_SETFL, 0), 0);
    }
    /// Waits until everything has been taken out of the scanner's pipe.
    static void WaitUntilRead(const ScannerOutput& output)
    {
        for (int unread = 1; unread > 0; std::this_thread::yield())
            ASSERT_EQ(::ioctl(output.ScannerEnd(), FIONREAD, &unread), 0);
    }
    /// Reads so many bytes of what has come to standard error.
    std::string Passed(std::size_t count) const
    {
        std::string text(count, '\0');
        for (std::size_t size = 0; size < count;) {
            const ssize_t got = ::read(errors[0], text.data() + size, count - size);
            if (got <= 0) {
                ADD_FAILURE() << "only " << size << " bytes came";
                break;
            }
            size += static_cast<std::size_t>(got);
        }
        return text;
    }

    std::array<int, 2> errors{};
};

TEST_F(ScannerOutputTest, IsPassedOnAndItsLastLineIsKnown)
{
    const Redirected standardError(STDERR_FILENO, errors[1]);
    ScannerOutput output;
    EXPECT_EQ(output.LastLine(), "");
    Say(output, "first\nsec");
    EXPECT_EQ(Passed(9), "first\nsec");
    EXPECT_EQ(output.LastLine(), "sec");
    Say(output, "ond\n\n");
    EXPECT_EQ(output.LastLine(), "second");
    EXPECT_EQ(Passed(5), "ond\n\n");
}

TEST_F(ScannerOutputTest, WhatWasWrittenLastIsPassedOnWhenItsObjectGoes)
{
    const Redirected standardError(STDERR_FILENO, errors[1]);
    {
        ScannerOutput output;
        Say(output, "last words\n");
    }
    EXPECT_EQ(Passed(11), "last words\n");
}

TEST_F(ScannerOutputTest, GoesWhereStandardErrorLedWhenTheScannerWasStarted)
{
    std::unique_ptr<ScannerOutput> output;
    {
        const Redirected standardError(STDERR_FILENO, errors[1]);
        output = std::make_unique<ScannerOutput>();
    }
    Say(*output, "text\n");
    EXPECT_EQ(Passed(5), "text\n");
}

TEST_F(ScannerOutputTest, AFullPipeAtStandardErrorHoldsNobodyUp)
{
    FillStandardError();
    const Redirected standardError(STDERR_FILENO, errors[1]);
    ScannerOutput output;
    Say(output, "one\n");
    Say(output, "two\n");
    EXPECT_EQ(output.LastLine(), "two");
    // The destructor must end although the thread waits for room.
}

TEST_F(ScannerOutputTest, GoesAlthoughThereIsNoRoomForWhatItHoldsAndForWhatComesAfterThat)
{
    FillStandardError();
    const Redirected standardError(STDERR_FILENO, errors[1]);
    ScannerOutput output;
    const std::string line = std::string(511, 'x') + "\n";
    Say(output, line);
    WaitUntilRead(output);
    // The thread may hold only this line while it waits for room. The bytes that come now fill the pipe, and
    // half of them can be read ahead.
    const auto pipeSize = static_cast<std::size_t>(::fcntl(output.ScannerEnd(), F_GETPIPE_SZ));
    for (std::size_t said = 0; said < pipeSize; said += line.size()) {
        Say(output, line);
        if (said == pipeSize / 2) {
            EXPECT_EQ(output.LastLine() + "\n", line);
        }
    }
}

TEST_F(ScannerOutputTest, NeverWritesMoreThanThereIsRoomFor)
{
    FillStandardError();
    const Redirected standardError(STDERR_FILENO, errors[1]);
    ScannerOutput output;
    Passed(PIPE_BUF);
    // The destructor must end although this is more than there is room for.
    Say(output, std::string(std::size_t{2} * PIPE_BUF, 'x'));
    // The first part has been written when the pipe is full again.
    const auto isFull = [this] {
        pollfd entry{errors[1], POLLOUT, 0};
        return ::poll(&entry, 1, 0) == 0;
    };
    while (!isFull())
        std::this_thread::yield();
}

TEST_F(ScannerOutputTest, APipeAtStandardErrorThatNobodyReadsEndsNothing)
{
    const Redirected standardError(STDERR_FILENO, errors[1]);
    ::close(errors[0]);
    errors[0] = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ScannerOutput output;
    // This is more than a pipe holds, so the output is still being read.
    for (int line = 0; line < 10'000; ++line)
        Say(output, "nobody reads this\n");
    Say(output, "last\n");
    EXPECT_EQ(output.LastLine(), "last");
}

TEST_F(ScannerOutputTest, WithClosedStandardDescriptorsItsEndLiesAboveThem)
{
    const Redirected input(STDIN_FILENO, -1);
    const Redirected standardError(STDERR_FILENO, -1);
    ScannerOutput output;
    EXPECT_GT(output.ScannerEnd(), STDERR_FILENO);
    for (int line = 0; line < 10'000; ++line)
        Say(output, "there is nowhere to pass it on to\n");
    Say(output, "last\n");
    EXPECT_EQ(output.LastLine(), "last");
}

TEST_F(ScannerOutputTest, TakesNoNumberOfAClosedStandardDescriptor)
{
    std::vector<int> taken;
    {
        const Redirected input(STDIN_FILENO, -1);
        const Redirected standardOutput(STDOUT_FILENO, -1);
        const Redirected standardError(STDERR_FILENO, -1);
        const ScannerOutput output;
        for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            if (::fcntl(descriptor, F_GETFD) >= 0)
                taken.push_back(descriptor);
    }
    EXPECT_THAT(taken, ::testing::IsEmpty());
}

TEST_F(ScannerOutputTest, AFailedStartTellsTheScannersLastLine)
{
    const Redirected standardError(STDERR_FILENO, errors[1]);
    Script(1, {"say cannot find a library", "die"});
    EXPECT_FALSE(Start({}));
    EXPECT_THAT(scan->StartFailure(),
                ::testing::Optional(::testing::EndsWith("; its last output: cannot find a library")));
    EXPECT_EQ(Passed(22), "cannot find a library\n");
}

TEST_F(ScannerOutputTest, AFailedStartTellsNoMoreThan300WholeCharactersOfTheLastLine)
{
    auto lastOutput = [this, launch = 0](const std::string& line) mutable {
        Script(++launch, {"say " + line, "die"});
        EXPECT_FALSE(Start({}));
        const std::string failure = scan->StartFailure().value_or("");
        const std::string before = "; its last output: ";
        const auto found = failure.find(before);
        return found == std::string::npos ? failure : failure.substr(found + before.size());
    };
    for (const std::string character : {"x", "\xC3\xBC", "\xF0\x9F\x8E\x9B"}) {
        std::string most;
        for (int i = 0; i < 300; ++i)
            most += character;
        EXPECT_EQ(lastOutput(most), most);
        EXPECT_EQ(lastOutput(most + character), most + "...");
        EXPECT_EQ(lastOutput("  " + most + character), most + "...");
    }
}

TEST_F(ScannerOutputTest, AScannerThatOutlivesItsFailedStartCanWriteAsLongAsItLives)
{
    PortWait portWait;
    portWait.now = [time = PortWait::Clock::time_point()]() mutable {
        return time += std::chrono::seconds(40);
    };
    scan = std::make_shared<ExternalAudioPluginScan>(portWait);
    Script(1, {"wait go", "say-much 1000000", "touch said", "wait end"});
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    {
        const Redirected standardError(STDERR_FILENO, nowhere);
        EXPECT_FALSE(Start({}));
    }
    ::close(nowhere);
    scan.reset();
    Touch("go");
    WaitForFile("said");
    EXPECT_TRUE(ScannersRun());
    Touch("end");
    EXPECT_TRUE(ScannersEnd());
}

} // namespace
} // namespace zetaudiopluginhostui
