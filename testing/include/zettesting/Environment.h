#pragma once

#include <filesystem>
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

/// While it lives, programs that start take this folder for the system's temporary one: one that is killed,
/// or that ends at once, leaves nothing anywhere else.
class ScopedTemporaryFolder
{
  public:
    explicit ScopedTemporaryFolder(const std::filesystem::path& folder);

  private:
    ScopedEnvironment variable;
};

} // namespace zettesting
