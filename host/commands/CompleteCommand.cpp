#include "commands/CompleteCommand.h"

#include <algorithm>
#include <ostream>
#include <set>

#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>

#include "commands/UsageError.h"
#include "session/Language.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiopluginhost::BannedPluginManager;

/// The files of the banned plug-ins. Several plug-ins of one file are one file.
std::vector<std::string> BannedFiles()
{
    std::set<std::string> files;
    try {
        for (const auto& banned : BannedPluginManager::PeekAtConfiguration(
                 {zetcore::filesupport::Dir::PrefDir(), BannedPluginManager::GetSettingsFileName()}))
            files.insert(zetcore::string::UTF16to8(banned.GetPath()));
    } catch (const zetcore::filesupport::file_exception&) {
        return {};
    }
    return {files.begin(), files.end()};
}

} // namespace

std::vector<std::string> CompletionLists()
{
    return {"banned", "languages"};
}

ExitStatus RunCompleteCommand(const std::string& list, std::ostream& output)
{
    std::vector<std::string> words;
    if (list == "banned")
        words = BannedFiles();
    else if (list == "languages")
        words = AvailableLanguages();
    else
        throw usage_error("complete " + list + ": there are " + JoinWords(CompletionLists()));
    for (const std::string& word : words)
        if (word.find_first_of("\r\n") == std::string::npos)
            output << word << '\n';
    return ExitStatus::Done;
}

} // namespace zetaudiopluginmanager
