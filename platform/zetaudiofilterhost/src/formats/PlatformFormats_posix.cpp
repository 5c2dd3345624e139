#include "formats/PlatformFormats.h"

namespace zetaudiofilterhost {

namespace {

using Kind = DefaultFolder::Kind;

constexpr DefaultFolder vst2Folders[] = {
    {Kind::PathList, "VST_PATH"},
    {Kind::InHome, ".vst"},
    {Kind::InHome, ".lxvst"},
    {Kind::Absolute, "/usr/local/lib/vst"},
    {Kind::Absolute, "/usr/lib/vst"},
    {Kind::Absolute, "/usr/lib/x86_64-linux-gnu/vst"},
    {Kind::Absolute, "/usr/local/lib/lxvst"},
    {Kind::Absolute, "/usr/lib/lxvst"},
};

constexpr DefaultFolder vst3Folders[] = {
    {Kind::InHome, ".vst3"},
    {Kind::Absolute, "/usr/local/lib/vst3"},
    {Kind::Absolute, "/usr/lib/vst3"},
    {Kind::BesideProgram, "vst3"},
};
constexpr BundleLayout vst3Bundle{"Contents", "x86_64-linux", L".so", vst3Descriptions};

constexpr DefaultFolder clapFolders[] = {
    {Kind::PathList, "CLAP_PATH"},
    {Kind::InHome, ".clap"},
    {Kind::Absolute, "/usr/lib/clap"},
};

} // namespace

const wchar_t pathListSeparator = L':';

FormatFiles Vst2Files()
{
    return {L".so", nullptr, vst2Folders};
}

FormatFiles Vst3Files()
{
    return {L".vst3", &vst3Bundle, vst3Folders};
}

FormatFiles ClapFiles()
{
    return {L".clap", nullptr, clapFolders};
}

std::wstring MachineRegistryText(const char* /*key*/, const char* /*value*/)
{
    return {};
}

} // namespace zetaudiofilterhost
