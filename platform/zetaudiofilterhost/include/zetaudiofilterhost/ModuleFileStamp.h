#pragma once

#include <cstdint>

#include <zetaudiofilterhost/Export.h>
#include <zetaudiofilterhost/PluginLocator.h>

namespace zetaudiofilterhost {

/// Tells a changed module from an unchanged one: size in bytes and time of the last change (nanoseconds since
/// 1970, UTC). Both 0 when the module cannot be looked at.
struct ModuleFileStamp
{
    std::uint64_t size = 0;
    std::int64_t time = 0;

    friend bool operator==(const ModuleFileStamp&, const ModuleFileStamp&) = default;
};

/// The stamp that a scan stores in its records and that the registry compares. Of a bundle it is the binary's
/// for this platform together with its description: the sum of the sizes and the newer time; a folder's
/// own time says nothing about the files in it. Take it before loading the module. Any thread.
ZETAUDIOFILTERHOST_API ModuleFileStamp GetModuleFileStamp(const PluginLocator& locator);

} // namespace zetaudiofilterhost
