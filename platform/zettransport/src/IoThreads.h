#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/strand.hpp>

namespace zettransport {

using Strand = boost::asio::strand<boost::asio::io_context::executor_type>;

/// The threads that run a transport's input and output. They work until `Stop`. Streams own this object too,
/// because their sockets need its context.
class IoThreads : public std::enable_shared_from_this<IoThreads>
{
  public:
    static std::shared_ptr<IoThreads> Create(int threads);

    boost::asio::io_context& Context() noexcept { return context; }
    /// True when no handler may be called any more. A completion asks before it does anything.
    bool Stopping() const noexcept { return stopping; }
    void SetStopping();
    /// Runs the call on the strand, or drops it when stopping.
    void Post(const Strand& strand, std::function<void()> call);

    /// Call this once, after every socket has been closed. It waits for the threads, except the calling one,
    /// and lets the cancelled operations end, so that none keeps its stream alive.
    void Stop();

  private:
    explicit IoThreads(int threads);
    void Run();
    void Drain();
    void RunContext();
    void RunWhatFollowsSoon();

    boost::asio::io_context context;
    std::optional<boost::asio::executor_work_guard<boost::asio::io_context::executor_type>> work;
    std::vector<std::thread> threads;
    /// `Post` and `SetStopping` hold this, so that nothing is posted after stopping began.
    std::mutex postMutex;
    std::atomic<bool> stopping = false;
    /// The thread on which `Stop` was called, if it is one of these threads.
    std::atomic<std::thread::id> drainingThread;
};

} // namespace zettransport
