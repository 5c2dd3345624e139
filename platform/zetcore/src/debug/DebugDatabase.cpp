#include <zetcore/debug/DebugDatabase.h>

#include <zetcore/debug/DeferredTrace.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/EnvironmentVariable.h>

#include "string/TextEntries.h"
#include "utility/Immortal.h"

namespace zetcore::debug {

namespace {

using Entries = std::map<std::string, std::string, std::less<>>;

void TraceSkipped(const std::string& source, std::size_t number)
{
    TraceLine(1, "DebugDatabase",
              source + ", entry " + std::to_string(number) + ": \"key = value\" is expected");
}

Entries ReadEntries(std::string_view text, char separator, const std::string& source)
{
    Entries entries;
    std::size_t number = 0;
    for (const std::string_view part : string::SplitText(text, separator)) {
        ++number;
        const std::string_view trimmed = string::Trim(part);
        if (trimmed.empty() || trimmed.starts_with('#'))
            continue;
        if (auto entry = string::ParseEntry(trimmed))
            entries.insert_or_assign(std::move(entry->key), std::move(entry->value));
        else
            TraceSkipped(source, number);
    }
    return entries;
}

Entries ReadEntriesOfFile(const filesupport::File& file)
{
    if (!file.Exists())
        return {};
    try {
        // Users write this file by hand, so it is small, and it is read whenever the preferences folder
        // changes.
        constexpr std::uint64_t largestDatabase = std::uint64_t{1} << 20;
        const std::string text = filesupport::FileUtils::ReadFile(file, largestDatabase);
        constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
        std::string_view content = text;
        if (content.starts_with(byteOrderMark))
            content.remove_prefix(byteOrderMark.size());
        return ReadEntries(content, '\n', string::UTF16to8(string::ForDisplay(file.FullPath())));
    } catch (const filesupport::file_exception& error) {
        TraceLine(1, "DebugDatabase", error.what());
        return {};
    }
}

} // namespace

DebugDatabase& DebugDatabase::Instance()
{
    return utility::Immortal<DebugDatabase>();
}

std::string DebugDatabase::GetEntry(std::string_view key, std::string_view defaultValue)
{
    const DeferredTrace afterTheLock;
    const std::lock_guard lock(mutex);
    LoadIfNeeded();
    for (const auto* entries : {&ownEntries, &environmentEntries, &fileEntries}) {
        if (const auto found = entries->find(key); found != entries->end())
            return found->second;
    }
    return std::string(defaultValue);
}

bool DebugDatabase::IsOn(std::string_view key, bool defaultValue)
{
    return GetEntry(key, defaultValue ? "true" : "false") == "true";
}

void DebugDatabase::SetEntry(std::string_view key, std::string_view value)
{
    const std::lock_guard lock(mutex);
    ownEntries.insert_or_assign(std::string(key), std::string(value));
}

void DebugDatabase::Reset()
{
    const std::lock_guard lock(mutex);
    loaded = false;
    loadedFrom.clear();
    fileEntries.clear();
    environmentEntries.clear();
    ownEntries.clear();
}

void DebugDatabase::LoadIfNeeded()
{
    const filesupport::Dir folder = filesupport::Dir::PrefDir();
    std::wstring from = folder.FullPath();
    if (loaded && from == loadedFrom)
        return;
    const auto environment = utility::EnvironmentVariable("ZET_DEBUG_DATABASE");
    environmentEntries =
        environment ? ReadEntries(string::UTF16to8(*environment), ';', "ZET_DEBUG_DATABASE") : Entries{};
    fileEntries = ReadEntriesOfFile(filesupport::File(folder, L"DebugDatabase.txt"));
    loadedFrom = std::move(from);
    loaded = true;
}

} // namespace zetcore::debug
