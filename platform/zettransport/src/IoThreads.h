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

/// The threads that run a transport's input and output. Streams own it too, because their sockets need its
/// context; it does its work until `Stop`.
class IoThreads : public std::enable_shared_from_this<IoThreads>
{
  public:
    static std::shared_ptr<IoThreads> Create(int threads);

    boost::asio::io_context& Context() noexcept { return context; }
    /// From now on nobody's handler may be called. Completions look at it first.
    bool Stopping() const noexcept { return stopping; }
    void SetStopping();
    /// Runs the call on the strand; drops it when stopping.
    void Post(const Strand& strand, std::function<void()> call);

    /// Once, after every socket has been closed. Waits for the threads (except the calling one) and lets the
    /// cancelled operations go, so that none keeps its stream alive.
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
    /// Orders `Post` against `SetStopping`: nothing is posted once it is set.
    std::mutex postMutex;
    std::atomic<bool> stopping = false;
    /// Set by `Stop` on one of the threads, for that thread.
    std::atomic<std::thread::id> drainingThread;
};

} // namespace zettransport
