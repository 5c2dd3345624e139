#include "formats/PlatformFormats.h"

#include <windows.h>

#include <zetcore/string/Utf.h>

namespace zetaudiofilterhost {

namespace {

using Kind = DefaultFolder::Kind;

constexpr DefaultFolder vst2Folders[] = {
    {Kind::PathList, "VST_PATH"},
    {Kind::MachineRegistry, "VSTPluginsPath", "SOFTWARE\\VST"},
    {Kind::InVariable, "VSTPlugins", "ProgramFiles"},
    {Kind::InVariable, "Steinberg\\VSTPlugins", "ProgramFiles"},
    {Kind::InVariable, "VST2", "CommonProgramFiles"},
    {Kind::InVariable, "Steinberg\\VST2", "CommonProgramFiles"},
};

constexpr DefaultFolder vst3Folders[] = {
    {Kind::InVariable, "Programs\\Common\\VST3", "LOCALAPPDATA"},
    {Kind::InVariable, "VST3", "CommonProgramFiles"},
    {Kind::BesideProgram, "VST3"},
};
constexpr BundleLayout vst3Bundle{"Contents", "x86_64-win", L".vst3", vst3Descriptions};

constexpr DefaultFolder clapFolders[] = {
    {Kind::PathList, "CLAP_PATH"},
    {Kind::InVariable, "CLAP", "CommonProgramFiles"},
    {Kind::InVariable, "Programs\\Common\\CLAP", "LOCALAPPDATA"},
};

} // namespace

const wchar_t pathListSeparator = L';';

FormatFiles Vst2Files()
{
    return {L".dll", nullptr, vst2Folders};
}

FormatFiles Vst3Files()
{
    return {L".vst3", &vst3Bundle, vst3Folders};
}

FormatFiles ClapFiles()
{
    return {L".clap", nullptr, clapFolders};
}

std::wstring MachineRegistryText(const char* key, const char* value)
{
    const std::wstring wideKey = zetcore::string::AsciiToUTF16(key);
    const std::wstring wideValue = zetcore::string::AsciiToUTF16(value);
    std::wstring text(32768, L'\0');
    DWORD bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    const LSTATUS status =
        ::RegGetValueW(HKEY_LOCAL_MACHINE, wideKey.c_str(), wideValue.c_str(),
                       RRF_RT_REG_SZ | RRF_SUBKEY_WOW6464KEY, nullptr, text.data(), &bytes);
    return status == ERROR_SUCCESS ? std::wstring(text.c_str()) : std::wstring();
}

} // namespace zetaudiofilterhost
