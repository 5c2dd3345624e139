#include "screenshots/Actor.h"

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

void Actor::Then(std::string name, std::function<bool()> step)
{
    steps.push_back({std::move(name), std::move(step)});
}

void Actor::Begin()
{
    waiting.start();
    Schedule();
}

void Actor::Schedule()
{
    // A timer of its own each time: one that repeats is not called again while a step holds a modal window.
    QTimer::singleShot(interval, [this] { Act(); });
}

void Actor::Act()
{
    if (IsDone()) {
        Schedule();
        if (afterwards)
            afterwards();
        return;
    }
    if (waiting.elapsed() > patience) {
        std::fprintf(stderr, "screenshots: waited in vain for: %s\n", steps[next].name.c_str());
        // Modal loops are open; there is nobody to return to.
        std::_Exit(1);
    }
    const std::size_t current = next;
    // Before the step, which may not return before a later one has closed its window.
    next = current + 1;
    Schedule();
    if (steps[current].act()) {
        waiting.restart();
        return;
    }
    next = current;
}

} // namespace screenshots
