#pragma once

#include <filesystem>
#include <system_error>

namespace zetcore::filesupport {

/// True when this error of a folder says that its drive or its server is away, or when the place of a folder
/// that was not found says so.
bool IsDriveAway(const std::filesystem::path& folder, const std::error_code& error);

} // namespace zetcore::filesupport
