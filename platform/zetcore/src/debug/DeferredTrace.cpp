#include <zetcore/debug/DeferredTrace.h>

#include <zetcore/debug/Trace.h>

namespace zetcore::debug {

namespace {

/// The outermost one of the calling thread, or null.
DeferredTrace*& OfThread()
{
    thread_local DeferredTrace* outermost = nullptr;
    return outermost;
}

} // namespace

DeferredTrace::DeferredTrace() : outermost(OfThread() == nullptr)
{
    if (outermost)
        OfThread() = this;
}

DeferredTrace::~DeferredTrace()
{
    if (!outermost)
        return;
    OfThread() = nullptr;
    for (const Line& line : lines)
        Trace(line.level, line.category, line.text);
}

bool DeferredTrace::Keep(int level, std::string_view category, std::string_view text)
{
    DeferredTrace* const keeper = OfThread();
    if (keeper)
        keeper->lines.push_back({level, std::string(category), std::string(text)});
    return keeper != nullptr;
}

} // namespace zetcore::debug
