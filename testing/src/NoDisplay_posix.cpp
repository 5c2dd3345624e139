#include <zettesting/NoDisplay.h>

#include <zettesting/Environment.h>

namespace zettesting {

struct NoDisplay::State
{
    ScopedEnvironment noPlatform{"QT_QPA_PLATFORM", std::nullopt};
    ScopedEnvironment noX{"DISPLAY", std::nullopt};
    ScopedEnvironment noWayland{"WAYLAND_DISPLAY", std::nullopt};
};

NoDisplay::NoDisplay() : state(std::make_unique<State>()) {}

NoDisplay::~NoDisplay() = default;

} // namespace zettesting
