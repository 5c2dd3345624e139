#pragma once

#include <exception>
#include <functional>

namespace zetui::ui {

/// Exceptions must not travel through Qt's event loop. Whatever Qt calls of ours (handlers, callbacks, draw
/// operations) is called through `CallFromToolkit`. That hands an exception to the innermost `HandlerErrors`
/// on the stack, which throws it again once Qt has returned. In a host's own event loop there may be none,
/// and the exception is traced. Main thread.
class HandlerErrors
{
  public:
    /// `stop` is called with the first exception, to end the loop that runs.
    explicit HandlerErrors(std::function<void()> stop = {});
    ~HandlerErrors();
    HandlerErrors(const HandlerErrors&) = delete;
    HandlerErrors& operator=(const HandlerErrors&) = delete;

    void Rethrow();
    bool HasAny() const noexcept { return first != nullptr; }
    void Keep(std::exception_ptr exception);

    static HandlerErrors* Innermost() noexcept;

  private:
    std::function<void()> stop;
    std::exception_ptr first;
    HandlerErrors* outer;
};

void CallFromToolkit(const std::function<void()>& call);

} // namespace zetui::ui
