#pragma once

#include <zetcore/filesupport/paths/Dir.h>

namespace zetaudiofilterscan {

/// A folder of this process's own in the user's runtime folder, removed with all that is in it. One at a
/// time.
class PrivateFolder
{
  public:
    /// Throws `file_exception`.
    PrivateFolder();
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    const zetcore::filesupport::Dir& Folder() const noexcept { return folder; }

  private:
    zetcore::filesupport::Dir folder;
};

} // namespace zetaudiofilterscan
