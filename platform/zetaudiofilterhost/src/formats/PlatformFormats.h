#pragma once

#include <string>
#include <string_view>

#include <zetaudiofilterhost/PluginFormat.h>

/// What differs between platforms in the table of formats.
namespace zetaudiofilterhost {

FormatFiles Vst2Files();
FormatFiles Vst3Files();
FormatFiles ClapFiles();
/// These are the same on every platform.
inline constexpr std::string_view vst3Descriptions[] = {"Contents/Resources/moduleinfo.json",
                                                        "Contents/moduleinfo.json"};

/// Between the folders in an environment variable.
extern const wchar_t pathListSeparator;
/// A text in the registry of the machine; empty when there is none.
std::wstring MachineRegistryText(const char* key, const char* value);

} // namespace zetaudiofilterhost
