#pragma once

#include <cstddef>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/filesupport/paths/Dir.h>

/// The logs that scanners leave: what plug-ins printed while they were scanned.
namespace zetaudiopluginhostui {

/// The plug-in's part of a log: all that stands below its headings, up to the next plug-in's, without notes
/// about others, and all notes about the plug-in (UTF-8). Empty when it has none.
std::string PartOfLog(const std::string& log, const zetaudiofilterhost::PluginLocator& locator);

/// The last whole lines of a text that together have no more than so many bytes. A longer last line is cut at
/// its beginning.
std::string LastLines(const std::string& text, std::size_t most);

struct PluginLog
{
    /// The log's whole path; empty when no log mentions the plug-in.
    std::wstring path;
    std::string part;
};

/// The plug-in's part of the newest log in the preferences folder that has one. A log that cannot be read is
/// passed over.
PluginLog FindPluginLog(const zetcore::filesupport::Dir& preferences,
                        const zetaudiofilterhost::PluginLocator& locator);

} // namespace zetaudiopluginhostui
