#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "FigureReport.h"
#include "ListData.h"

namespace bench {

/// Puts the entries into the registry, and those that do not work into the list of banned plug-ins. Saves
/// both where the host keeps them.
void FillRegistry(const std::vector<ListEntry>& entries);

/// Measures the plug-in manager on these entries, with real clicks and keys, each up to the painted window.
void BenchManager(const std::vector<ListEntry>& entries, int runs, int frames, FigureReport& report);

} // namespace bench
