#include "scan/FormatLoaders.h"

#include <ostream>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginFormat.h>
#include <zetcore/string/Utf.h>

#include "testing/ModuleLoaderFixture.h"

namespace zetaudiopluginhost {
namespace {

using namespace testing;
using zetaudiofilterhost::FindPluginFormat;
using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginFormat;
using zetaudiofilterhost::PluginFormats;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

struct Facts
{
    TechnologyType type;
    std::vector<std::string_view> entryNames;
    bool hasDescriptions;
    TechnologyType shellsAreReplacedBy;
    bool hasNumericIds;
};

void PrintTo(const Facts& facts, std::ostream* stream)
{
    *stream << zetcore::string::UTF16to8(TechnologyName(facts.type));
}

const std::vector<Facts> allFacts{
    {TechnologyType::VST, {"VSTPluginMain", "main"}, false, TechnologyType::VST3, true},
    {TechnologyType::VST3, {"GetPluginFactory"}, true, TechnologyType::Unknown, false},
    {TechnologyType::CLAP, {"clap_entry"}, false, TechnologyType::Unknown, false},
};

TEST(FormatLoaders, EveryFormatOfThisPlatformHasOneAndNoOther)
{
    for (const PluginFormat& format : PluginFormats())
        EXPECT_EQ(FindFormatLoader(format.type) != nullptr, format.IsOnThisPlatform())
            << zetcore::string::UTF16to8(std::wstring(format.name));
    for (const FormatLoader& loader : FormatLoaders())
        EXPECT_NE(FindPluginFormat(loader.type), nullptr) << static_cast<int>(loader.type);
    EXPECT_EQ(FormatLoaders().size(), allFacts.size());
    for (const int code : {-1, 0, 1, 99})
        EXPECT_EQ(FindFormatLoader(static_cast<TechnologyType>(code)), nullptr) << code;
}

class FormatLoaderTest : public ModuleLoaderFixture, public WithParamInterface<Facts>
{};

TEST_P(FormatLoaderTest, TheRowSaysHowTheFormatIsAsked)
{
    const Facts& facts = GetParam();
    const FormatLoader* loader = FindFormatLoader(facts.type);
    ASSERT_NE(loader, nullptr);
    std::vector<std::string_view> entryNames;
    for (const EntryPoint& entry : loader->entryPoints)
        entryNames.push_back(entry.name);
    EXPECT_EQ(entryNames, facts.entryNames);
    EXPECT_NE(loader->ask, nullptr);
    EXPECT_EQ(loader->describe != nullptr, facts.hasDescriptions);
    EXPECT_EQ(loader->shells.by, facts.shellsAreReplacedBy);
    EXPECT_EQ(loader->shells.comparisonName != nullptr, facts.shellsAreReplacedBy != TechnologyType::Unknown);
    EXPECT_EQ(loader->hasNumericIds, facts.hasNumericIds);
}

// A library of one format under another one's name has none of that one's entry functions.
TEST_P(FormatLoaderTest, ALibraryOfAnotherFormatIsNotLoaded)
{
    for (const char* plugin : {"good/vst2_effect", "good/vst3_single_file", "good/clap_effect"}) {
        const std::filesystem::path source = zettesting::TestPlugin(plugin);
        const PluginLocator own = LocatorOf(source);
        if (own.GetTechnologyType() == GetParam().type)
            continue;
        const std::filesystem::path disguised = folder / "disguised.module";
        std::filesystem::copy_file(source, disguised, std::filesystem::copy_options::overwrite_existing);
        ModuleLoader loader({}, [this](ScanPhase phase) { phases.push_back(phase); });
        const ScanOutcome outcome = loader.Scan({GetParam().type, zettesting::ToWide(disguised)});
        EXPECT_EQ(Only(outcome).GetStatus(), ModuleStatus::NotAPlugin);
        EXPECT_EQ(Only(outcome).GetReason(), "no plug-in entry point");
        EXPECT_THAT(phases, IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(, FormatLoaderTest, ValuesIn(allFacts), [](const auto& row) {
    return zetcore::string::UTF16to8(TechnologyName(row.param.type));
});

TEST(ModuleLoaderTechnologies, OnlyOneThatReplacesShellsIsWorthKnowing)
{
    std::vector<TechnologyType> replacing;
    for (int code = -1; code < 10; ++code)
        if (ModuleLoader::ReplacesShells(static_cast<TechnologyType>(code)))
            replacing.push_back(static_cast<TechnologyType>(code));
    EXPECT_THAT(replacing, ElementsAre(TechnologyType::VST3));
}

class UnknownTechnology : public ModuleLoaderFixture
{};

TEST_F(UnknownTechnology, IsNotTakenForOneThatCanBeLoaded)
{
    const std::wstring path = zettesting::ToWide(zettesting::TestPlugin("good/vst2_effect"));
    for (const auto type : {TechnologyType::Unknown, TechnologyType::AU, static_cast<TechnologyType>(99)}) {
        ModuleLoader loader({}, [this](ScanPhase phase) { phases.push_back(phase); });
        const ScanOutcome outcome = loader.Scan({type, path});
        EXPECT_EQ(Only(outcome).GetStatus(), ModuleStatus::NotAPlugin);
        EXPECT_EQ(Only(outcome).GetReason(), "a plug-in of a technology that this system does not have");
        EXPECT_THAT(phases, IsEmpty());
    }
}

} // namespace
} // namespace zetaudiopluginhost
