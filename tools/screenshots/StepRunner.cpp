#include "screenshots/StepRunner.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include <QTimer>

namespace screenshots {

namespace {

constexpr int interval = 20;
/// A scan of all plug-ins of a machine is one step.
constexpr qint64 patience = 120'000;

} // namespace

void StepRunner::Then(std::string name, std::function<bool()> step)
{
    steps.push_back({std::move(name), std::move(step)});
}

void StepRunner::Begin()
{
    waiting.start();
    Schedule();
}

void StepRunner::Schedule()
{
    // Each try has a timer of its own. A repeating timer would not be called while a step holds a modal
    // window.
    QTimer::singleShot(interval, [this] { TryNextStep(); });
}

void StepRunner::TryNextStep()
{
    if (IsDone()) {
        Schedule();
        if (afterwards)
            afterwards();
        return;
    }
    if (waiting.elapsed() > patience) {
        std::fprintf(stderr, "screenshots: waited in vain for: %s\n", steps[next].name.c_str());
        // Modal event loops are still running, so that the function cannot just return.
        std::_Exit(1);
    }
    const std::size_t current = next;
    // The next step is scheduled before this one runs, because this one may only return after a later one has
    // closed its window.
    next = current + 1;
    Schedule();
    if (steps[current].act()) {
        waiting.restart();
        return;
    }
    next = current;
}

} // namespace screenshots
