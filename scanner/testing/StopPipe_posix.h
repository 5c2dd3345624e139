#pragma once

#include <filesystem>
#include <string>

#include <zetcore/filesupport/handles/Descriptor.h>

namespace zetaudiofilterscan {

/// The pipe over which one process with a fault "stop" says that it stands still; its name is to be in the
/// variable `ZET_FAULT_PIPE`. Nobody stands still without it.
class StopPipe
{
  public:
    /// Throws `std::system_error`.
    explicit StopPipe(const std::filesystem::path& path);

    std::string Name() const { return name.string(); }
    /// A process has come to its place.
    bool IsTaken() const;
    /// Waits until a process stands still, and returns its number. 0 when there is none within a minute.
    int WaitForStop() const;

  private:
    const std::filesystem::path name;
    const zetcore::filesupport::Descriptor reader;
};

} // namespace zetaudiofilterscan
