#pragma once

#include <cstddef>
#include <filesystem>

namespace zetaudiofilterscan {

/// Makes a file of so many bytes that the system does not have in memory; false where its file system keeps
/// all files there.
bool MakeColdFile(const std::filesystem::path& path, std::size_t bytes);

/// The part of the file that the system has in memory, from 0 to 1.
double PartInMemory(const std::filesystem::path& path);

/// False when the whole file is not there after a minute.
bool WaitUntilInMemory(const std::filesystem::path& path);

} // namespace zetaudiofilterscan
