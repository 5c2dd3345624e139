#pragma once

#include <string>

#include <zetcore/filesupport/paths/Dir.h>

#include "report/PrivateWords.h"

namespace zetaudiopluginmanager {

/// Everything that somebody who looks into a problem asks for first: versions, system, folders, plug-ins,
/// bans with their reasons, switches, and the last logs of scans. It is one text of valid UTF-8 without
/// control characters, of 2 MiB at most, in which the private words are replaced. It changes nothing,
/// damaged files least of all, and it names what it cannot read and goes on. `version` is the program's line.
/// Main thread.
std::string MakeReport(const std::string& version, const zetcore::filesupport::Dir& preferences,
                       const PrivateWords& privateWords);

} // namespace zetaudiopluginmanager
