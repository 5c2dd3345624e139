#pragma once

#include <cstdint>
#include <string>

#include <zetcore/filesupport/paths/File.h>

namespace zetaudiofilterscan {

/// True for a file that this user's programs alone can have written: no link, no other user's file, and none
/// that others may write.
bool IsPrivateFile(const zetcore::filesupport::File& file);

/// The content of such a file; any other is refused. Throws `file_exception`.
std::string ReadPrivateFile(const zetcore::filesupport::File& file, std::uint64_t maxBytes);

/// Puts a new file in the place of whatever has the name. A link there goes, and what it leads to stays.
/// Throws `file_exception`.
void WritePrivateFile(const zetcore::filesupport::File& file, const std::string& bytes);

} // namespace zetaudiofilterscan
