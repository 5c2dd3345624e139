#pragma once

#include <string>

namespace zetaudiofilterscan {

/// Asks the system to read the file, in the background. A folder, a pipe and what is not there are passed
/// over.
void ReadFileAhead(const std::wstring& path);

/// Of a file that is longer, the rest is not asked for. Loading needs little of a library that carries so
/// much, and other modules' files would have to leave the memory for it.
constexpr long long mostBytesAhead = 64LL << 20;

} // namespace zetaudiofilterscan
