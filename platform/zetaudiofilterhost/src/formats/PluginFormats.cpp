#include <zetaudiofilterhost/PluginFormat.h>

#include <algorithm>
#include <array>

#include "formats/PlatformFormats.h"

namespace zetaudiofilterhost {

std::span<const PluginFormat> PluginFormats()
{
    static const std::array formats{
        PluginFormat{TechnologyType::VST, L"VST", Vst2Files()},
        PluginFormat{TechnologyType::VST3, L"VST3", Vst3Files()},
        // Audio Units are on macOS only: a file that a macOS host has saved keeps what it says of them.
        PluginFormat{TechnologyType::AU, L"AU", {}},
        PluginFormat{TechnologyType::CLAP, L"CLAP", ClapFiles()},
    };
    return formats;
}

const PluginFormat* FindPluginFormat(TechnologyType type)
{
    const auto formats = PluginFormats();
    const auto found = std::ranges::find(formats, type, &PluginFormat::type);
    return found == formats.end() ? nullptr : &*found;
}

const PluginFormat* FindPluginFormat(std::wstring_view name)
{
    const auto formats = PluginFormats();
    const auto found = std::ranges::find(formats, name, &PluginFormat::name);
    return found == formats.end() ? nullptr : &*found;
}

} // namespace zetaudiofilterhost
