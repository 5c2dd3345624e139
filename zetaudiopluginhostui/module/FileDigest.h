#pragma once

#include <cstdint>

#include <zetcore/filesupport/paths/File.h>

namespace zetaudiopluginhostui {

/// Returns the FNV-1a hash of the whole content, and 0 when there is no such file. Throws `file_exception`
/// when the file cannot be read. Any thread.
std::uint64_t FileDigest(const zetcore::filesupport::File& file);

} // namespace zetaudiopluginhostui
