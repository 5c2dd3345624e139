#include "supervisor/conversation/PluginFiles.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <filesystem>

#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/process/OwnProcess.h>
#include <zetcore/string/Utf.h>

#include "FileGuard.h"
#include "PluginHome.h"
#include "supervisor/log/ScanLog.h"

namespace zetaudiofilterscan {

namespace {

constexpr char refuseWritingKey[] = "zetaudiofilterscan.RefuseWriting";
constexpr char writableKey[] = "zetaudiofilterscan.WritableFolders";

std::filesystem::path OwnPluginHome()
{
    return PluginHomePath(zetcore::process::OwnProcessNumber());
}

} // namespace

std::vector<std::wstring> ReadWritableList(std::string_view list)
{
    std::vector<std::wstring> paths;
    while (!list.empty()) {
        const std::string_view path = list.substr(0, list.find(':'));
        list.remove_prefix(std::min(path.size() + 1, list.size()));
        if (path.starts_with('/'))
            paths.push_back(zetcore::string::UTF8to16(path));
    }
    return paths;
}

void DecidePluginFiles(WorkerSettings& settings, ScanLog& log)
{
    auto& debugDatabase = zetcore::debug::DebugDatabase::Instance();
    settings.refuseWriting = debugDatabase.GetEntry(refuseWritingKey, "true") != "false";
    settings.writable = ReadWritableList(debugDatabase.GetEntry(writableKey, ""));
    if (!settings.refuseWriting)
        return;
    if (const auto lack = LackOfFileGuard()) {
        log.Note(lack->text);
        settings.refuseWriting = false;
    }
}

void MakePluginFiles(ScanLog& log)
{
    RemoveAbandonedPluginHomes();
    try {
        MakePluginHome(OwnPluginHome());
    } catch (const std::exception& error) {
        log.Note(std::string("Plug-ins can write nowhere, because their folder cannot be made: ") +
                 error.what());
    }
}

void RemovePluginFiles() noexcept
try {
    RemovePluginHome(OwnPluginHome());
} catch (const std::exception&) {
    // Without a runtime folder there is no home.
}

} // namespace zetaudiofilterscan
