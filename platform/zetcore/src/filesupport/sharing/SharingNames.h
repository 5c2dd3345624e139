#pragma once

#include <cstddef>
#include <string>

#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/sharing/MemoryMappedFile.h>

/// The names under which processes find what they share.
namespace zetcore::filesupport {

/// Returns the lock file in the runtime folder that stands for this file. Throws `file_exception` when there
/// is no runtime folder.
File LockFileFor(const File& file);

/// True for letters, digits, '-', '_' and dots that do not begin the name. The name must do for a file and
/// for a kernel object.
bool IsBlockName(const std::string& name);

/// Throws `std::invalid_argument` when these cannot be the arguments of `MemoryMappedFile::Init`.
void CheckBlock(const std::string& name, std::size_t size, int flags);

} // namespace zetcore::filesupport
