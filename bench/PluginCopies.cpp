#include "PluginCopies.h"

#include <algorithm>

namespace bench {

namespace fs = std::filesystem;

namespace {

#if defined(_WIN32)
constexpr const char* suffix = ".dll";
#else
constexpr const char* suffix = ".so";
#endif

} // namespace

fs::path MakeCopies(const fs::path& folder, const std::string& plugin, int copies, const std::string& prefix,
                    int outOf)
{
    constexpr int firstNumber = 100'000;
    fs::create_directories(folder);
    const fs::path original = fs::path(ZET_BENCH_PLUGINS) / (plugin + suffix);
    const int distance = std::max(1, outOf / std::max(1, copies));
    for (int index = 0; index < copies; ++index)
        fs::copy_file(original, folder / (prefix + std::to_string(firstNumber + index * distance) + "_" +
                                          original.stem().string() + suffix));
    return folder;
}

} // namespace bench
