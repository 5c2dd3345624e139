#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetaudiopluginhost/ModuleLoader.h>
#include <zettesting/HostFixture.h>
#include <zettesting/TestPlugins.h>

namespace zetaudiopluginhost {

inline zetaudiofilterhost::PluginLocator LocatorOf(const std::filesystem::path& file)
{
    return zetaudiofilterhost::LocatorOfModuleFile(zettesting::ToWide(file));
}

/// Scans sample plug-ins in this process.
class ModuleLoaderFixture : public zettesting::HostFixture
{
  protected:
    ScanOutcome Scan(const std::filesystem::path& file, ScanOptions options = {})
    {
        ModuleLoader loader(options, [this](ScanPhase phase) { phases.push_back(phase); });
        return loader.Scan(LocatorOf(file));
    }
    ScanOutcome Scan(const char* plugin, ScanOptions options = {})
    {
        return Scan(zettesting::TestPlugin(plugin), options);
    }
    static const zetaudiofilterhost::PluginModuleInfo& Only(const ScanOutcome& outcome)
    {
        EXPECT_FALSE(outcome.misbehaved) << WordFailures({outcome.failure});
        if (outcome.infos.size() != 1)
            throw std::runtime_error(std::to_string(outcome.infos.size()) + " records");
        return *outcome.infos.front();
    }
    void ExpectStatus(const std::filesystem::path& file, zetaudiofilterhost::ModuleStatus status,
                      const std::string& reason)
    {
        phases.clear();
        const ScanOutcome outcome = Scan(file);
        EXPECT_EQ(Only(outcome).GetStatus(), status) << file;
        EXPECT_THAT(Only(outcome).GetReason(), testing::HasSubstr(reason)) << file;
        EXPECT_FALSE(Only(outcome).GetName().empty()) << file;
        EXPECT_EQ(phases.empty(), status == zetaudiofilterhost::ModuleStatus::NotAPlugin) << file;
    }

    static constexpr ScanOptions full{false, false};
    std::vector<ScanPhase> phases;
};

} // namespace zetaudiopluginhost
