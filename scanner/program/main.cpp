#include <cstdio>
#include <string_view>
#include <vector>

#include <zetcore/string/ParseNumber.h>

#include "ExitCodes.h"
#include "PluginHome.h"
#include "RunSupervisor.h"
#include "RunWorker.h"
#include "WorkerArguments.h"

namespace {

int RemoveHome(std::string_view supervisor)
{
    const auto number = zetcore::string::ParseNumber<std::uint64_t>(supervisor);
    if (!number)
        return zetaudiofilterscan::exitWrongUsage;
    zetaudiofilterscan::RemovePluginHome(zetaudiofilterscan::PluginHomePath(*number));
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    if (const auto worker = zetaudiofilterscan::WorkerArguments::Read(arguments))
        zetaudiofilterscan::RunWorker(*worker);
    if (arguments.size() == 2 && arguments[0] == zetaudiofilterscan::removeHomeOption)
        return RemoveHome(arguments[1]);
    if (arguments.empty())
        zetaudiofilterscan::RunSupervisor();
    std::fputs("zetaudiofilterscan scans audio plug-ins for a host application, which starts it without\n"
               "arguments. There is nothing to set here.\n",
               stderr);
    return zetaudiofilterscan::exitWrongUsage;
}
