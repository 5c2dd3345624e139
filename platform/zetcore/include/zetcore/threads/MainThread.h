#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include <zetcore/Export.h>

/// The main thread's queue. This library has no event loop of its own: a program registers an adaptor that
/// drains the queue.
namespace zetcore::threads {

/// An event loop offers this to code that must let posted calls run. The program's start-up code registers
/// one.
class ZETCORE_API MainThreadAdaptor
{
  public:
    virtual ~MainThreadAdaptor();

    /// True when `Run` may be called now, which means on the main thread. Any thread.
    virtual bool CanRun() const = 0;
    /// Carries out what has been posted and returns when nothing is left, or at the deadline. Main thread.
    virtual void Run(std::chrono::steady_clock::time_point deadline) = 0;
    /// Tells that something was posted. It must not block, and it must not run the call. Any thread.
    virtual void Wake() = 0;
};

/// Queues a call for the main thread and returns at once. Calls run in the order in which they were posted. A
/// call that throws is traced, and the queue goes on. The delay is in milliseconds; only 0 is in use. Any
/// thread.
ZETCORE_API void AsyncCallFromMainThread(std::function<void()> call, int delayMilliseconds);

/// Returns the registered adaptor, or null.
ZETCORE_API std::shared_ptr<MainThreadAdaptor> GetRegisteredMainThread();
/// Makes the calling thread the main thread. Null unregisters the adaptor and forgets which thread was the
/// main thread.
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

/// Runs the calls that are queued, and those that they queue, until none is left or the deadline passes.
/// Returns true when any ran. Adaptors call it on the main thread.
ZETCORE_API bool RunQueuedCalls(std::chrono::steady_clock::time_point deadline);
ZETCORE_API bool HasQueuedCalls();

} // namespace zetcore::threads
