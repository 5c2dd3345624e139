#pragma once

#include <filesystem>
#include <string>

namespace bench {

/// A folder for one run's files. The destructor removes it.
class ScratchFolder
{
  public:
    explicit ScratchFolder(const std::string& name);
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    const std::filesystem::path& Path() const { return path; }
    /// Makes a new preferences folder.
    std::string Prefs();

  private:
    std::filesystem::path path;
    int count = 0;
};

} // namespace bench
