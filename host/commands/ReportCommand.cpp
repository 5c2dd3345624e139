#include "commands/ReportCommand.h"

#include <ostream>

#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/string/Utf.h>

#include "commands/UsageError.h"
#include "commands/Version.h"
#include "report/Report.h"
#include "report/SystemFacts.h"
#include "session/HostSession.h"
#include "terminal/DisplayText.h"
#include "terminal/PluginFile.h"

namespace zetaudiopluginmanager {

using zetcore::filesupport::Dir;
using zetcore::filesupport::FileUtils;

ExitStatus RunReportCommand(const ReportOptions& options, std::ostream& output)
{
    const bool toOutput = options.file == "-";
    const std::wstring path = toOutput ? std::wstring() : AbsolutePath(options.file);
    if (!toOutput && IsFolder(path))
        throw usage_error("this is a folder: " + ForTerminal(path));
    if (!toOutput && !options.force && PathExists(path))
        throw usage_error("there is such a file already ('--force' replaces it): " + ForTerminal(path));

    const std::string report =
        MakeReport(VersionLine(), Dir::PrefDir(), PrivateWords(HomeFolders(), AccountNames()));
    if (toOutput) {
        output << report;
        return ExitStatus::Done;
    }
    FileUtils::ReplaceContent(path, report, zetcore::filesupport::Durability::PowerCut);
    if (!options.quiet)
        Say("the report is in " + ForTerminal(path) +
            "\nIt does not name you or your home folder. Read it before you hand it on: plug-ins wrote parts "
            "of it.");
    return ExitStatus::Done;
}

} // namespace zetaudiopluginmanager
