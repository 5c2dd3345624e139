#pragma once

#include <filesystem>
#include <string>

#include <zetcore/filesupport/paths/LongPath.h>

namespace zetcore::filesupport {

/// The system's functions are given this. The standard library does not know paths in this form.
inline std::wstring SystemPath(const std::filesystem::path& path)
{
    return LongForm(path.native());
}

} // namespace zetcore::filesupport
