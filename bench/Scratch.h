#pragma once

#include <filesystem>
#include <string>

namespace bench {

/// A folder for one run's files. The destructor removes it.
class Scratch
{
  public:
    explicit Scratch(const std::string& name);
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    const std::filesystem::path& Path() const { return path; }
    /// Makes a new preferences folder.
    std::string Prefs();

  private:
    std::filesystem::path path;
    int count = 0;
};

} // namespace bench
