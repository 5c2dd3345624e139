#pragma once

#include <memory>

namespace zettesting {

/// While this object lives, this process and those that it starts have no display. For it to reach other
/// processes, it must be made before a thread has windows.
class NoDisplay
{
  public:
    NoDisplay();
    ~NoDisplay();
    NoDisplay(const NoDisplay&) = delete;
    NoDisplay& operator=(const NoDisplay&) = delete;

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace zettesting
