#pragma once

#include <string>
#include <vector>

#include "output/PluginRow.h"
#include "scan/ScanOutcome.h"
#include "scan/ScanReport.h"

/// The output of `--json`. It is UTF-8 and ends with a line end. `ForJson` makes its texts, and `PathForJson`
/// its paths.
namespace zetaudiopluginmanager {

/// An array with one object on each line. An object has technology, path, subcomponent, name, version,
/// vendor, id, category, enabled, effect, instrument, status ("working", "banned", "failed", "unreadable" or
/// "unscanned") and fileTime. Plug-ins that do not work also have reason, and banned ones bannedAt. A time is
/// like "2031-01-31T23:59:59Z", and null when it is unknown.
std::string FormatRowsAsJson(const std::vector<PluginRow>& rows);

/// One object. It has scanned, found, the arrays added, updated, removed, banned, triedAgain, unreadable and
/// unreached, end ("done", "cancelled", "notstarted" or "gaveup"), reason (of the end) and seconds. The
/// objects in the arrays have technology (empty for a folder), path, subcomponent and name. Those of banned,
/// triedAgain, unreadable and unreached also have reason, and those of triedAgain isStillBanned.
std::string FormatScanReportAsJson(const ScanReport& report);

/// The same as the last line of a scan that tells its progress: `"event":"summary"` stands before the rest.
std::string FormatScanSummaryLine(const ScanReport& report);
/// A line for each plug-in file: event ("plugin"), done, total, technology, path, status ("working",
/// "failed", "banned", "unreadable", "noplugin", "skipped" or "unscanned"), reason, and plugins, the names of
/// those that work.
std::string FormatScanOutcomeLine(const ScanOutcome& outcome);

} // namespace zetaudiopluginmanager
