#include "report/FolderFacts.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string_view>

#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/paths/FolderState.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>

#include "output/TimeText.h"
#include "report/ReportText.h"

namespace zetaudiopluginmanager {

namespace {

using zetcore::filesupport::Dir;
using zetcore::filesupport::File;
using zetcore::string::UTF16to8;

std::string FactsOfFile(const File& file)
{
    const std::filesystem::path native = zetcore::filesupport::ToNativePath(file.FullPath());
    std::error_code noFile;
    if (std::filesystem::is_regular_file(native, noFile)) {
        try {
            return ", " + SizeText(file.Size()) + ", " +
                   TimeText(std::chrono::floor<std::chrono::seconds>(
                       std::chrono::nanoseconds(file.ModificationTime())));
        } catch (const std::exception& error) {
            return std::string(", ") + error.what();
        }
    }
    return std::filesystem::is_directory(native, noFile) ? ", a folder" : ", no file";
}

} // namespace

std::string_view FolderStateText(const std::wstring& folder)
{
    switch (zetcore::filesupport::LookAtFolder(folder)) {
    case zetcore::filesupport::FolderState::There:
        return "";
    case zetcore::filesupport::FolderState::NotFound:
        return " (not there)";
    case zetcore::filesupport::FolderState::Offline:
        break;
    }
    return " (offline)";
}

FolderNames NamesIn(const Dir& folder, std::size_t most)
{
    FolderNames result;
    for (const auto& entry :
         std::filesystem::directory_iterator(zetcore::filesupport::ToNativePath(folder.FullPath()))) {
        if (result.names.size() == most) {
            result.complete = false;
            break;
        }
        result.names.push_back(zetcore::filesupport::FromNativePath(entry.path().filename()));
    }
    std::ranges::sort(result.names);
    return result;
}

std::string MoreNamesLine(const FolderNames& names)
{
    return names.complete ? std::string()
                          : "[there are more than " + std::to_string(names.names.size()) +
                                " files here; the others were not looked at]\n";
}

std::string FileLines(const Dir& folder, std::size_t mostFiles, std::size_t mostNames)
{
    const FolderNames names = NamesIn(folder, mostNames);
    std::string text;
    if (names.names.size() > mostFiles)
        text += "[" + std::to_string(names.names.size()) + " files; sizes and times of the first " +
                std::to_string(mostFiles) + " only]\n";
    text += MoreNamesLine(names);
    for (std::size_t index = 0; index < names.names.size(); ++index)
        text += UTF16to8(names.names[index]) +
                (index < mostFiles ? FactsOfFile(File(folder, names.names[index])) : std::string()) + "\n";
    return text;
}

std::string SearchedFolderLines(const std::vector<SearchedFolder>& folders, std::size_t mostFolders)
{
    std::string text;
    if (folders.size() > mostFolders)
        text += "[" + std::to_string(folders.size()) + " folders; only the first " +
                std::to_string(mostFolders) + " were looked at]\n";
    for (std::size_t index = 0; index < folders.size(); ++index)
        text += UTF16to8(folders[index].format) + "  " + UTF16to8(folders[index].path) +
                std::string(index < mostFolders ? FolderStateText(folders[index].path) : std::string_view()) +
                "\n";
    return text;
}

} // namespace zetaudiopluginmanager
