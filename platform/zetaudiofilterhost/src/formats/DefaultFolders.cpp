#include "formats/DefaultFolders.h"

#include <filesystem>
#include <utility>

#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/EnvironmentVariable.h>

#include "formats/PlatformFormats.h"

namespace zetaudiofilterhost {

namespace commondirs = zetcore::filesupport::commondirs;
using zetcore::utility::EnvironmentVariable;

namespace {

void AppendPathList(std::vector<std::wstring>& folders, std::wstring_view list)
{
    while (!list.empty()) {
        const std::size_t end = list.find(pathListSeparator);
        if (const std::wstring_view entry = list.substr(0, end); !entry.empty())
            folders.emplace_back(entry);
        list = end == list.npos ? std::wstring_view() : list.substr(end + 1);
    }
}

/// A folder that this user or this machine does not have is left out.
void AppendInside(std::vector<std::wstring>& folders, const std::wstring& parent, const std::wstring& name)
{
    constexpr auto separator = static_cast<wchar_t>(std::filesystem::path::preferred_separator);
    if (!parent.empty())
        folders.push_back(parent + separator + name);
}

} // namespace

std::vector<std::wstring> DefaultFoldersOf(const PluginFormat& format)
{
    using Kind = DefaultFolder::Kind;
    std::vector<std::wstring> folders;
    for (const DefaultFolder& entry : format.files.defaultFolders) {
        const std::wstring text = zetcore::string::AsciiToUTF16(entry.text);
        switch (entry.kind) {
        case Kind::Absolute:
            folders.push_back(text);
            break;
        case Kind::InHome:
            AppendInside(folders, commondirs::HomeDir().FullPath(), text);
            break;
        case Kind::BesideProgram:
            AppendInside(folders, commondirs::ExecutableDir().FullPath(), text);
            break;
        case Kind::InVariable:
            AppendInside(folders, EnvironmentVariable(entry.place).value_or(std::wstring()), text);
            break;
        case Kind::PathList:
            AppendPathList(folders, EnvironmentVariable(entry.text).value_or(std::wstring()));
            break;
        case Kind::MachineRegistry:
            if (std::wstring folder = MachineRegistryText(entry.place, entry.text); !folder.empty())
                folders.push_back(std::move(folder));
            break;
        }
    }
    return folders;
}

} // namespace zetaudiofilterhost
