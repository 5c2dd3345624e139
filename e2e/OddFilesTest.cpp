#include <algorithm>
#include <set>

#include <gmock/gmock.h>

#include "ManagerFixture.h"

namespace {

using Strings = std::vector<std::string>;

class OddFiles : public ManagerFixture, public testing::WithParamInterface<bool>
{
  protected:
    Strings ScanArguments() const { return GetParam() ? Strings{"--in-process"} : Strings{}; }
};

INSTANTIATE_TEST_SUITE_P(BothWays, OddFiles, testing::Bool(),
                         [](const auto& test) { return test.param ? "InProcess" : "Externally"; });

TEST_P(OddFiles, WhatCannotBeAPluginIsPassedOverAndNeverBanned)
{
    zettesting::MakeTextModule(plugins);
    zettesting::MakeEmptyModule(plugins);
    zettesting::MakeTruncatedModule(plugins);
    zettesting::Make32BitModule(plugins);
    zettesting::MakeOtherMachineModule(plugins);
    zettesting::MakeOtherSystemModule(plugins);
    const auto good = Install("good/vst2_effect", "z_good");
    const ScanSummary summary = Scan(ScanArguments());
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.found, 1);
    EXPECT_EQ(summary.banned, Strings());
    EXPECT_EQ(ListedPaths(), Strings{good.string()});
    EXPECT_EQ(Scan(ScanArguments()).scanned, 0);
}

TEST_P(OddFiles, AFileThatBecomesAPluginIsFoundByTheNextScan)
{
    const auto file = zettesting::MakeTextModule(plugins);
    EXPECT_EQ(Scan(ScanArguments()).found, 0);
    std::filesystem::copy_file(zettesting::TestPlugin("good/vst2_effect"), file,
                               std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(Scan(ScanArguments()).found, 1);
    EXPECT_EQ(ListedPaths(), Strings{file.string()});
}

TEST_P(OddFiles, PluginsWithOddNamesAreFoundAndCanBeNamed)
{
    const auto files = zettesting::CopyTestPluginWithOddNames("good/vst2_effect", plugins);
    const auto bundles = zettesting::CopyTestPluginWithOddNames("good/vst3_without_moduleinfo", plugins);
    const ScanSummary summary = Scan(ScanArguments());
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.banned, Strings());
    EXPECT_EQ(summary.found, static_cast<long long>(files.size() + bundles.size()));
    EXPECT_EQ(ListedPaths().size(), files.size() + bundles.size());
    RunWell({"list"});

    Strings disable{"disable", "--"};
    for (const auto& file : files)
        disable.push_back(file.string());
    RunWell(disable);
    EXPECT_EQ(List({"--disabled"}).size(), files.size());
    EXPECT_EQ(List({"--enabled"}).size(), bundles.size());
    EXPECT_EQ(Scan(ScanArguments()).scanned, 0);
}

TEST_P(OddFiles, LinksAreFollowedAndCyclesAreNot)
{
    const auto elsewhere = folder / "elsewhere";
    std::filesystem::create_directories(elsewhere / "deep");
    zettesting::CopyTestPlugin("good/vst2_effect", elsewhere / "deep", "linked");
    const bool linked = zettesting::MakeFolderLink(elsewhere, plugins / "link");
    zettesting::MakeLinkCycle(plugins);
    const ScanSummary summary = Scan(ScanArguments());
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.found, linked ? 1 : 0);
    EXPECT_EQ(summary.banned, Strings());
}

TEST_P(OddFiles, ABundleIsOnePlugin)
{
    const auto bundle = Install("good/vst3_without_moduleinfo", "bundle");
    EXPECT_EQ(Scan(ScanArguments()).scanned, 1);
    EXPECT_EQ(ListedPaths(), Strings{bundle.string()});
}

class OddBanned : public ManagerFixture
{};

TEST_F(OddBanned, CrashingPluginsWithOddNamesAreBannedUnderTheirNames)
{
    const auto files = zettesting::CopyTestPluginWithOddNames("bad/crash_in_entry", plugins);
    const ScanSummary summary = Scan();
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(std::set<std::string>(summary.banned.begin(), summary.banned.end()).size(), files.size());
    EXPECT_EQ(List({"--banned"}).size(), files.size());
    EXPECT_EQ(Scan().scanned, 0);

    Strings reload{"reload", "--"};
    for (const auto& file : files) {
        std::filesystem::copy_file(zettesting::TestPlugin("good/vst2_effect"), file,
                                   std::filesystem::copy_options::overwrite_existing);
        reload.push_back(file.string());
    }
    RunWell(reload);
    EXPECT_EQ(List({"--banned"}).size(), 0u);
    EXPECT_EQ(List({"--enabled"}).size(), files.size());
}

} // namespace
