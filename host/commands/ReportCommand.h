#pragma once

#include <iosfwd>
#include <string>

#include "session/ExitStatus.h"

namespace zetaudiopluginmanager {

struct ReportOptions
{
    /// "-" is standard output.
    std::string file;
    /// Replaces a file that is there.
    bool force = false;
    bool quiet = false;
};

/// Writes a report about this program, the system, the plug-ins and the last scans for somebody who looks
/// into a problem. It needs no session, so that it works, and changes nothing, when the preferences are
/// damaged. Throws `usage_error` for a file that is there, `file_exception` when the file cannot be written.
ExitStatus RunReportCommand(const ReportOptions& options, std::ostream& output);

} // namespace zetaudiopluginmanager
