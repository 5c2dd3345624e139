#include "PluginHome.h"

namespace zetaudiofilterscan {

std::filesystem::path PluginHomePath(std::uint64_t)
{
    return {};
}

void MakePluginHome(const std::filesystem::path&) {}

void RemovePluginHome(const std::filesystem::path&) noexcept {}

void RemoveAbandonedPluginHomes() noexcept {}

std::vector<std::pair<std::string, std::string>> PluginHomeVariables(const std::filesystem::path&)
{
    return {};
}

} // namespace zetaudiofilterscan
