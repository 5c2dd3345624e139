#pragma once

#include <string>
#include <string_view>

#include <zetaudiofilterhost/PluginFormat.h>

/// The parts of the table of formats that differ between platforms.
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
