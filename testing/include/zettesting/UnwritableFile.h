#pragma once

#include <filesystem>
#include <memory>

namespace zettesting {

/// While this object lives, nobody can write the file, not even an administrator. On POSIX systems a link
/// that leads nowhere takes its place, so that the file seems to be missing. On Windows this process has the
/// file open and lets others only read it; a missing file is made, empty.
class UnwritableFile
{
  public:
    explicit UnwritableFile(const std::filesystem::path& file);
    ~UnwritableFile();
    UnwritableFile(const UnwritableFile&) = delete;
    UnwritableFile& operator=(const UnwritableFile&) = delete;

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace zettesting
