#pragma once

#include <string>

namespace zetaudiofilterscan {

/// Loads the banned and the unsupported list of the host for this process. They are the host's files: a
/// damaged one is traced and left where it is, and counts as empty.
void LoadBannedLists(const std::wstring& bannedPath, const std::wstring& permanentBannedPath);

} // namespace zetaudiofilterscan
