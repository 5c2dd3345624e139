#pragma once

#include <memory>

namespace zettesting {

/// While it lives, this process and those that it starts have no display. Made before a thread has windows,
/// where it is to reach other processes.
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
