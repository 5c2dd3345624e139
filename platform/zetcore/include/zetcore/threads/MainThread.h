#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include <zetcore/Export.h>

/// The main thread's queue. zetcore has no event loop of its own: a program registers an adaptor that drains
/// the queue.
namespace zetcore::threads {

/// An event loop offers this to code that must let posted calls run. Registered once, by the program's
/// start-up code.
class ZETCORE_API MainThreadAdaptor
{
  public:
    virtual ~MainThreadAdaptor();

    /// True when `Run` may be called now, that is, on the main thread. Main thread and others.
    virtual bool CanRun() const = 0;
    /// Carries out what has been posted and returns when nothing is left, or at the deadline. Main thread.
    virtual void Run(std::chrono::steady_clock::time_point deadline) = 0;
    /// Something was posted. Must not block nor run it. Any thread.
    virtual void Wake() = 0;
};

/// Queues a call for the main thread and returns at once. Calls run in the order they were posted. Any
/// thread. The second parameter is a delay in milliseconds; 0 is the only one in use. A call that throws is
/// traced, and the queue goes on.
ZETCORE_API void AsyncCallFromMainThread(std::function<void()> call, int delayMilliseconds);

/// The registered adaptor, or null.
ZETCORE_API std::shared_ptr<MainThreadAdaptor> GetRegisteredMainThread();
/// Makes the calling thread the main thread. Null unregisters (and forgets which thread was the main thread).
ZETCORE_API void RegisterMainThread(std::shared_ptr<MainThreadAdaptor> adaptor);
ZETCORE_API bool IsMainThread();

/// Ends the program with a message that names the operation, unless this is the main thread or none is
/// registered.
ZETCORE_API void RequireMainThread(const char* operation);
/// The first line of an operation that is for the main thread alone. It requires the main thread in builds
/// with assertions, and does nothing in the others (NDEBUG).
#ifdef NDEBUG
inline void AssertMainThread() noexcept {}
#else
inline void AssertMainThread(const char* operation = __builtin_FUNCTION())
{
    RequireMainThread(operation);
}
#endif

/// For adaptors, on the main thread: runs the calls that are queued, and those that they queue, until none is
/// left or the deadline passes. Returns whether any ran.
ZETCORE_API bool RunQueuedCalls(std::chrono::steady_clock::time_point deadline);
ZETCORE_API bool HasQueuedCalls();
/// Drops what is queued; for tests.
ZETCORE_API void ClearQueuedCalls();

} // namespace zetcore::threads
