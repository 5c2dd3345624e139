#include "supervisor/log/EntityOutput.h"

#include "supervisor/log/ScanLog.h"

namespace zetaudiofilterscan {

EntityOutput::EntityOutput(ScanLog& scanLog, const zetaudiofilterhost::PluginLocator& locator)
    : log(scanLog), name(NameForLog(locator))
{}

void EntityOutput::Take(std::string_view bytes)
{
    if (bytes.empty())
        return;
    tail.Append(bytes);
    if (!hasHeading || log.LastHeading() != name)
        log.Heading(name);
    hasHeading = true;
    log.Output(bytes);
}

} // namespace zetaudiofilterscan
