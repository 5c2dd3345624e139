#include "application/HandlerErrors.h"

#include <string>
#include <utility>

#include <zetcore/debug/Trace.h>

namespace zetui::ui {

namespace {

HandlerErrors*& InnermostErrors()
{
    static HandlerErrors* innermost = nullptr;
    return innermost;
}

std::string MessageOf(const std::exception_ptr& exception)
{
    try {
        std::rethrow_exception(exception);
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "an exception of an unknown kind";
    }
}

} // namespace

HandlerErrors::HandlerErrors(std::function<void()> stopLoop)
    : stop(std::move(stopLoop)), outer(std::exchange(InnermostErrors(), this))
{}

HandlerErrors::~HandlerErrors()
{
    InnermostErrors() = outer;
}

void HandlerErrors::Rethrow()
{
    if (first)
        std::rethrow_exception(std::exchange(first, nullptr));
}

void HandlerErrors::Keep(std::exception_ptr exception)
{
    if (first)
        return;
    first = std::move(exception);
    if (stop)
        stop();
}

HandlerErrors* HandlerErrors::Innermost() noexcept
{
    return InnermostErrors();
}

void CallFromToolkit(const std::function<void()>& call)
{
    try {
        call();
    } catch (...) {
        if (HandlerErrors* const errors = HandlerErrors::Innermost()) {
            errors->Keep(std::current_exception());
            return;
        }
        zetcore::debug::TraceLine(1, "zetui", "A handler failed: " + MessageOf(std::current_exception()));
    }
}

} // namespace zetui::ui
