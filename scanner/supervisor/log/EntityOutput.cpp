#include "supervisor/log/EntityOutput.h"

#include "supervisor/log/ScanLog.h"

namespace zetaudiofilterscan {

EntityOutput::EntityOutput(ScanLog& scanLog, const zetaudiofilterhost::PluginLocator& locator)
    : log(scanLog), plugin(locator)
{}

void EntityOutput::Restart()
{
    hasHeading = false;
    tail.Clear();
}

void EntityOutput::Take(std::string_view bytes)
{
    if (bytes.empty())
        return;
    tail.Append(bytes);
    if (!hasHeading)
        log.Heading(NameForLog(plugin));
    hasHeading = true;
    log.Output(bytes);
}

} // namespace zetaudiofilterscan
