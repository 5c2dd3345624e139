#pragma once

#include <optional>
#include <string>

namespace zettesting {

/// Sets an environment variable (or unsets it: no value) and puts it back.
class ScopedEnvironment
{
  public:
    ScopedEnvironment(std::string name, std::optional<std::string> value);
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

  private:
    std::string name;
    std::optional<std::string> before;
};

} // namespace zettesting
