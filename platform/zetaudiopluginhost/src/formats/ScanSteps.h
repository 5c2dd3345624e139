#pragma once

#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include <zetaudiopluginhost/ScanOutcome.h>

namespace zetaudiopluginhost {

/// A plug-in let an exception out of a call; the message is the exception's own, empty when it had none.
class PluginThrew : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// A plug-in is one but cannot be used, and is banned for that. The phase is not set.
class PluginUnusable : public std::runtime_error
{
  public:
    explicit PluginUnusable(PluginFailure why)
        : std::runtime_error(WordFailures({why})), failure(std::move(why))
    {}
    const PluginFailure& Failure() const noexcept { return failure; }

  private:
    PluginFailure failure;
};

/// The shell is a good one, but the plug-in that was asked for is not in it (any more).
class PluginMissing : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// Calls into a plug-in. What it throws is copied and let go of while its code is still loaded, and cannot be
/// mistaken for an exception of ours.
template<class Call>
std::invoke_result_t<Call> CallPlugin(Call&& call)
{
    std::string message;
    try {
        return call();
    } catch (const std::exception& exception) {
        message = exception.what();
    } catch (...) {
        message.clear();
    }
    throw PluginThrew(message);
}

/// The step in a plug-in's life at which its scan is.
class ScanSteps
{
  public:
    explicit ScanSteps(const std::function<void(ScanPhase)>& callback) : onPhase(callback) {}

    /// To be called before the phase begins. Telling a phase twice in a row is done once.
    void Enter(ScanPhase next)
    {
        if (next == phase)
            return;
        phase = next;
        if (onPhase)
            onPhase(next);
    }
    ScanPhase Phase() const noexcept { return phase; }

  private:
    const std::function<void(ScanPhase)>& onPhase;
    ScanPhase phase = ScanPhase::Unknown;
};

} // namespace zetaudiopluginhost
