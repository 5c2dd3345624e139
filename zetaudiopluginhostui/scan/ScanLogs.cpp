#include "scan/ScanLogs.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <vector>

#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>
#include <zetscanprotocol/ScanLogFormat.h>

namespace zetaudiopluginhostui {

using zetcore::filesupport::Dir;
using zetcore::filesupport::File;

std::string PartOfLog(const std::string& log, const zetaudiofilterhost::PluginLocator& locator)
{
    const std::string name = zetcore::string::UTF16to8(locator.ToString());
    const std::string heading = zetscanprotocol::logHeadingMark + name;
    const std::string ownNote = zetscanprotocol::logNoteMark + name;
    std::string part, line;
    bool inside = false;
    std::istringstream lines(log);
    while (std::getline(lines, line)) {
        std::string_view text = line;
        if (text.ends_with('\r'))
            text.remove_suffix(1);
        if (text.starts_with(zetscanprotocol::logHeadingMark))
            inside = text == heading;
        else if (text.starts_with(zetscanprotocol::logNoteMark)
                     // A note that names another plug-in is about that one, or about many.
                     ? text.starts_with(ownNote) || (inside && text.find('|') == std::string_view::npos)
                     : inside)
            part.append(text).append("\n");
    }
    return part;
}

std::string LastLines(const std::string& text, std::size_t most)
{
    if (text.size() <= most)
        return text;
    std::size_t start = text.size() - most;
    if (const std::size_t lineEnd = text.find('\n', start - 1); lineEnd < text.size() - 1)
        return text.substr(lineEnd + 1);
    const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
    while (start < text.size() && continues(text[start]))
        ++start;
    return text.substr(start);
}

PluginLog FindPluginLog(const Dir& preferences, const zetaudiofilterhost::PluginLocator& locator)
{
    const std::wstring folder = File(preferences, zetscanprotocol::logFolder).FullPath();
    std::vector<std::wstring> names;
    std::error_code ignored;
    for (const auto& entry :
         std::filesystem::directory_iterator(zetcore::filesupport::ToNativePath(folder), ignored)) {
        std::wstring name = zetcore::filesupport::FromNativePath(entry.path().filename());
        if (zetscanprotocol::IsLogName(name))
            names.push_back(std::move(name));
    }
    // The names begin with the time.
    std::ranges::sort(names, std::greater());
    for (const std::wstring& name : names) {
        const File log(Dir(folder), name);
        try {
            std::string part = PartOfLog(zetcore::filesupport::FileUtils::ReadFile(log), locator);
            if (!part.empty())
                return {log.FullPath(), std::move(part)};
        } catch (const std::exception&) {
            continue;
        }
    }
    return {};
}

} // namespace zetaudiopluginhostui
