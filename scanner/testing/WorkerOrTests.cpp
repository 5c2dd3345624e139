// The main function of tests that start workers: a worker is a process of the same program.
#include <cstdint>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <zetcore/string/ParseNumber.h>

#include "PluginHome.h"
#include "RunWorker.h"
#include "WorkerArguments.h"

int main(int argc, char** argv)
{
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    if (const auto worker = zetaudiofilterscan::WorkerArguments::Read(arguments))
        zetaudiofilterscan::RunWorker(*worker);
    // A worker whose tests were killed runs the program once more, to clear away.
    if (arguments.size() == 2 && arguments[0] == zetaudiofilterscan::removeHomeOption) {
        if (const auto number = zetcore::string::ParseNumber<std::uint64_t>(arguments[1]))
            zetaudiofilterscan::RemovePluginHome(zetaudiofilterscan::PluginHomePath(*number));
        return 0;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
