#pragma once

#include <filesystem>

#include <windows.h>

#include <zetcore/filesupport/handles/Handle.h>

namespace zetcore::filesupport {

/// True when another program that has the file open for a moment (a reader, a writer that replaces it, a
/// search indexer, a virus scanner) may be why something failed.
bool MayPass(DWORD error) noexcept;

/// Opens a file for reading, or with an access of 0 for a look at it, whoever else has it open; tries again
/// for a short time while it is just being replaced. Not open when that fails: `GetLastError` tells why.
Handle OpenShared(const std::filesystem::path& path, DWORD access);

} // namespace zetcore::filesupport
