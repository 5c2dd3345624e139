#include "supervisor/log/ScanLog.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>
#include <zetscanprotocol/ScanLogFormat.h>

namespace zetaudiofilterscan {

using zetcore::filesupport::Dir;
using zetcore::filesupport::File;
using zetcore::filesupport::FileUtils;
using zetcore::filesupport::FromNativePath;
using zetcore::filesupport::ToNativePath;

namespace {

// Sorts by time: "20240131-235959-123".
std::string TimeStamp()
{
    const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    const auto day = std::chrono::floor<std::chrono::days>(now);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(now - day);
    const auto digits = [](long long number, std::size_t count) {
        const std::string text = std::to_string(number);
        return std::string(count - std::min(count, text.size()), '0') + text;
    };
    return digits(static_cast<int>(date.year()), 4) + digits(static_cast<unsigned>(date.month()), 2) +
           digits(static_cast<unsigned>(date.day()), 2) + "-" + digits(time.hours().count(), 2) +
           digits(time.minutes().count(), 2) + digits(time.seconds().count(), 2) + "-" +
           digits(time.subseconds().count(), 3);
}

void DeleteSurplus(const std::wstring& folder)
{
    std::vector<std::wstring> names;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(ToNativePath(folder), ignored))
        names.push_back(FromNativePath(entry.path().filename()));
    // One place is for the file that is about to be made.
    for (const std::wstring& name : SurplusLogs(std::move(names), ScanLog::maxFiles - 1))
        File(Dir(folder), name).Delete();
}

} // namespace

ScanLog::ScanLog(std::wstring folderPath, std::string end)
    : folder(std::move(folderPath)), nameEnd(std::move(end))
{}

void ScanLog::Heading(const std::string& line)
{
    lastHeading = line;
    WriteLine(zetscanprotocol::logHeadingMark, line);
}

void ScanLog::Output(std::string_view bytes)
{
    if (bytes.empty())
        return;
    Write(bytes);
    atLineStart = bytes.back() == '\n';
}

void ScanLog::Note(const std::string& line)
{
    WriteLine(zetscanprotocol::logNoteMark, line);
}

void ScanLog::WriteLine(const char* mark, const std::string& line)
{
    Write((atLineStart ? "" : "\n") + (mark + line) + "\n");
    atLineStart = true;
}

void ScanLog::Write(std::string_view bytes)
{
    if (failed || written >= maxBytes)
        return;
    try {
        if (path.empty())
            Open();
        FileUtils::AppendToFile(path, bytes.substr(0, maxBytes - written));
        written += std::min(bytes.size(), maxBytes - written);
        if (written >= maxBytes)
            FileUtils::AppendToFile(path, "\n-- The log has reached its limit; what follows is dropped.\n");
    } catch (const std::exception& error) {
        failed = true;
        zetcore::debug::TraceLine(1, "ScanLog", error.what());
    }
}

void ScanLog::Open()
{
    Dir(folder).Create();
    DeleteSurplus(folder);
    const std::string name = TimeStamp() + "-" + nameEnd;
    path =
        File(Dir(folder), std::wstring(zetscanprotocol::logNamePrefix) + zetcore::string::AsciiToUTF16(name) +
                              std::wstring(zetscanprotocol::logNameSuffix))
            .FullPath();
}

std::string NameForLog(const zetaudiofilterhost::PluginLocator& locator)
{
    return zetcore::string::UTF16to8(locator.ToString());
}

std::string NamesForLog(const std::vector<zetaudiofilterhost::PluginLocator>& locators)
{
    constexpr std::size_t most = 20;
    std::string text;
    const std::size_t first = locators.size() - std::min(locators.size(), most);
    if (first > 0)
        text = std::to_string(first) + " others, ";
    for (std::size_t index = first; index < locators.size(); ++index)
        text += (index > first ? ", " : "") + NameForLog(locators[index]);
    return text;
}

std::vector<std::wstring> SurplusLogs(std::vector<std::wstring> names, std::size_t keep)
{
    std::erase_if(names, [](const std::wstring& name) { return !zetscanprotocol::IsLogName(name); });
    std::ranges::sort(names);
    names.resize(names.size() - std::min(names.size(), keep));
    return names;
}

} // namespace zetaudiofilterscan
