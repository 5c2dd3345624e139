#pragma once

#include <csignal>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace zetcore::filesupport {

/// A copy of the test's process that runs one function, for tests of what processes do to each other. Start
/// it only while the test has one thread. Both sides can send the other single letters.
class ForkedChild
{
  public:
    class Channel
    {
      public:
        void Send(char letter) const
        {
            if (::write(out, &letter, 1) != 1)
                ::_exit(99);
        }
        /// The next letter, or 0 when the other side has gone.
        char Receive() const
        {
            char letter = 0;
            return ::read(in, &letter, 1) == 1 ? letter : '\0';
        }

        int in = -1;
        int out = -1;
    };

    explicit ForkedChild(const std::function<int(Channel&)>& function)
    {
        int toChild[2];
        int toParent[2];
        EXPECT_EQ(::pipe(toChild), 0);
        EXPECT_EQ(::pipe(toParent), 0);
        process = ::fork();
        if (process == 0) {
            ::close(toChild[1]);
            ::close(toParent[0]);
            Channel own;
            own.in = toChild[0];
            own.out = toParent[1];
            int status = 98;
            try {
                status = function(own);
            } catch (...) {
            }
            ::_exit(status);
        }
        ::close(toChild[0]);
        ::close(toParent[1]);
        channel.in = toParent[0];
        channel.out = toChild[1];
    }

    explicit ForkedChild(const std::function<int()>& function)
        : ForkedChild(std::function<int(Channel&)>([&](Channel&) { return function(); }))
    {}

    ~ForkedChild()
    {
        Kill();
        ::close(channel.in);
        ::close(channel.out);
    }

    ForkedChild(const ForkedChild&) = delete;
    ForkedChild& operator=(const ForkedChild&) = delete;

    void Send(char letter) const { EXPECT_EQ(::write(channel.out, &letter, 1), 1); }
    char Receive() const { return channel.Receive(); }

    /// Its exit status, or -1 when a signal ended it.
    int Wait()
    {
        int status = 0;
        if (process > 0)
            ::waitpid(process, &status, 0);
        process = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    void Kill()
    {
        if (process > 0)
            ::kill(process, SIGKILL);
        Wait();
    }

  private:
    pid_t process = -1;
    Channel channel;
};

} // namespace zetcore::filesupport
