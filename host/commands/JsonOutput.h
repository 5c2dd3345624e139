#pragma once

#include <string>
#include <vector>

#include "commands/PluginRow.h"
#include "commands/ScanReport.h"

/// The output of `--json`: UTF-8, with a line end. Texts are as `ForJson` makes them, paths as `PathForJson`.
namespace zetaudiopluginmanager {

/// An array of objects, one a line: technology, path, subcomponent, name, version, vendor, id, category,
/// enabled, effect, instrument, status ("working", "banned", "failed", "unreadable" or "unscanned"), fileTime
/// and, for those that do not work, reason; for banned ones, bannedAt. Times are like "2031-01-31T23:59:59Z",
/// null when unknown.
std::string FormatRowsAsJson(const std::vector<PluginRow>& rows);

/// One object: scanned, found, the arrays added, updated, removed, banned, triedAgain, unreadable and
/// unreached, end ("done", "cancelled", "notstarted" or "gaveup"), reason (of the end), seconds. The arrays'
/// objects have technology (empty for a folder), path, subcomponent and name; those of banned, triedAgain,
/// unreadable and unreached reason, too, and those of triedAgain isStillBanned.
std::string FormatScanReportAsJson(const ScanReport& report);

} // namespace zetaudiopluginmanager
