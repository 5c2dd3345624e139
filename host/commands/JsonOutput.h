#pragma once

#include <string>
#include <vector>

#include "commands/PluginRow.h"
#include "commands/ScanReport.h"

/// What `--json` prints: UTF-8, with a line end. Texts are as `ForJson` makes them, paths as `PathForJson`.
namespace zetaudiopluginmanager {

/// An array of objects, one a line: technology, path, subcomponent, name, version, vendor, enabled, effect,
/// status ("working" or "banned") and, for banned ones, reason.
std::string FormatRowsAsJson(const std::vector<PluginRow>& rows);

/// One object: scanned, found, banned (array of paths), seconds.
std::string FormatScanReportAsJson(const ScanReport& report);

} // namespace zetaudiopluginmanager
