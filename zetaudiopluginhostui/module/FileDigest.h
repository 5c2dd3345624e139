#pragma once

#include <cstdint>
#include <string_view>

#include <zetcore/filesupport/File.h>

namespace zetaudiopluginhostui {

/// 64-bit FNV-1a: tells a changed content from an unchanged one, nothing more. Any thread.
std::uint64_t DigestOf(std::string_view bytes) noexcept;

/// Of the whole content; 0 when there is no such file. Throws `file_exception` when it cannot be read.
std::uint64_t FileDigest(const zetcore::filesupport::File& file);

} // namespace zetaudiopluginhostui
