#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <thread>
#include <vector>

#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

constexpr std::size_t mebibyte = std::size_t{1} << 20;

/// In MiB. Nobody's machine is to be filled.
std::size_t Most()
{
    const char* most = std::getenv("ZET_TEST_PLUGIN_MEMORY");
    return most ? static_cast<std::size_t>(std::atoi(most)) : 600;
}

} // namespace

/// Takes more and more memory and touches all of it, up to a bound. Then it waits for ever.
ZET_VST2_ENTRY
{
    std::vector<std::vector<char>> taken;
    while (taken.size() < Most())
        taken.emplace_back(mebibyte, 'm');
    for (volatile bool goOn = true; goOn;)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    return MakeEffect(Ordinary("Takes Memory", "BaMe"), host);
}
