#pragma once

#include <filesystem>
#include <memory>

namespace zettesting {

/// While it lives, the file cannot be written, not even by an administrator: where there are links, one that
/// leads nowhere takes its place, so that it seems to be missing; on Windows it is open in a program that
/// lets others only read it (an empty one where there was none).
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
