#include <cstdio>
#include <string_view>
#include <vector>

#include "ExitCodes.h"
#include "RunSupervisor.h"
#include "RunWorker.h"
#include "WorkerArguments.h"

int main(int argc, char** argv)
{
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    if (const auto worker = zetaudiofilterscan::WorkerArguments::Read(arguments))
        zetaudiofilterscan::RunWorker(*worker);
    if (arguments.empty())
        zetaudiofilterscan::RunSupervisor();
    std::fputs("zetaudiofilterscan scans audio plug-ins for a host application, which starts it without\n"
               "arguments. There is nothing to set here.\n",
               stderr);
    return zetaudiofilterscan::exitWrongUsage;
}
