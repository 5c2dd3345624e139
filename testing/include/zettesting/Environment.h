#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace zettesting {

/// Sets an environment variable, or removes it when there is no value. The destructor puts the old state
/// back.
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

/// While this object lives, programs that start use this folder as the system's temporary one. A program that
/// is killed then leaves its files nowhere else.
class ScopedTemporaryFolder
{
  public:
    explicit ScopedTemporaryFolder(const std::filesystem::path& folder);

  private:
    ScopedEnvironment variable;
};

} // namespace zettesting
