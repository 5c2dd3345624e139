#pragma once

#include <cstdint>

#include <zetcore/filesupport/paths/File.h>

namespace zetaudiopluginhostui {

/// The FNV-1a hash of the whole content; 0 when there is no such file. Throws `file_exception` when it cannot
/// be read. Any thread.
std::uint64_t FileDigest(const zetcore::filesupport::File& file);

} // namespace zetaudiopluginhostui
