#include <zetaudiofilterhost/PluginFormat.h>

#include <optional>
#include <ostream>

#include <gmock/gmock.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zettesting/Environment.h>
#include <zettesting/TestPlugins.h>

#include "files/PluginFileSearch.h"
#include "formats/DefaultFolders.h"
#include "testing/RegistryFixture.h"
#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiofilterhost/ModuleFiles.h>

namespace zetaudiofilterhost {

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using zetcore::filesupport::ToNativePath;
using zettesting::ToWide;

/// The facts that a row of the table must give. The tests below try for each row that the rest of the library
/// goes by them.
struct Facts
{
    int code;
    std::wstring name;
    /// Empty for a format that this platform cannot load.
    std::string extension;
    bool hasBundles;
    /// The environment variable with folders that are searched first.
    std::optional<std::string> pathVariable;
};

void PrintTo(const Facts& facts, std::ostream* stream)
{
    *stream << zetcore::string::UTF16to8(facts.name);
}

std::vector<Facts> AllFacts()
{
    return {
        {2, L"VST", std::string(zettesting::ModuleSuffix()), false, "VST_PATH"},
        {3, L"VST3", ".vst3", true, std::nullopt},
        {4, L"AU", "", false, std::nullopt},
        {5, L"CLAP", ".clap", false, "CLAP_PATH"},
    };
}

TEST(PluginFormats, AreListedInTheOrderOfSearching)
{
    std::vector<std::wstring> listed, wanted;
    for (const PluginFormat& format : PluginFormats())
        listed.emplace_back(format.name);
    for (const Facts& facts : AllFacts())
        wanted.push_back(facts.name);
    EXPECT_EQ(listed, wanted);
}

TEST(PluginFormats, AnythingElseIsNoFormat)
{
    for (const int code : {-1, 0, 1, 99}) {
        EXPECT_EQ(FindPluginFormat(static_cast<TechnologyType>(code)), nullptr) << code;
        EXPECT_EQ(TechnologyName(static_cast<TechnologyType>(code)), L"") << code;
    }
    for (const wchar_t* name : {L"", L"VST2", L"vst", L"VST ", L"None"})
        EXPECT_EQ(FindPluginFormat(std::wstring_view(name)), nullptr) << zetcore::string::UTF16to8(name);
}

class PluginFormatTest : public RegistryFixture, public ::testing::WithParamInterface<Facts>
{
  protected:
    PluginFormatTest() { std::filesystem::create_directory(plugins); }

    const Facts& facts = GetParam();
    const TechnologyType type = static_cast<TechnologyType>(facts.code);
    const PluginFormat* const format = FindPluginFormat(type);

    /// The finds of each format's search in the folder, as locator texts without the folder.
    std::vector<std::string> Search(const std::filesystem::path& where) const
    {
        std::vector<std::string> found;
        for (const PluginFormat& each : PluginFormats()) {
            PluginFileSearch search(each);
            EXPECT_TRUE(search.SearchFolder(ToWide(where)));
            for (const FoundPlugin& plugin : search.Found())
                found.push_back(zetcore::string::UTF16to8(std::wstring(each.name)) + " " +
                                ToNativePath(plugin.path).lexically_relative(plugins).generic_string());
        }
        return found;
    }
    std::string Found(const std::string& module) const
    {
        return zetcore::string::UTF16to8(facts.name) + " " + module;
    }

    const std::filesystem::path plugins = folder / "plugins";
};

class LoadableFormatTest : public PluginFormatTest
{};
class BundledFormatTest : public PluginFormatTest
{};
class FormatWithVariableTest : public PluginFormatTest
{};

TEST_P(PluginFormatTest, TheRowSaysWhatTheFormatIs)
{
    ASSERT_NE(format, nullptr);
    EXPECT_EQ(FindPluginFormat(facts.name), format);
    EXPECT_EQ(format->name, facts.name);
    EXPECT_EQ(TechnologyName(type), facts.name);
    EXPECT_EQ(format->files.extension, zetcore::string::UTF8to16(facts.extension));
    EXPECT_EQ(format->IsOnThisPlatform(), !facts.extension.empty());
    EXPECT_EQ(format->files.bundle != nullptr, facts.hasBundles);
    EXPECT_EQ(format->files.defaultFolders.empty(), facts.extension.empty());
}

TEST_P(PluginFormatTest, ALocatorCarriesItsName)
{
    const PluginLocator locator(type, L"/p/a b", L"sub");
    EXPECT_EQ(locator.ToString(), facts.name + L"|/p/a b|sub");
    EXPECT_EQ(PluginLocator::FromString(locator.ToString()), locator);
}

TEST_P(PluginFormatTest, TheRegistryKeepsItsRecordsFoldersChoicesAndAsides)
{
    const PluginLocator record(type, L"/p/record"), choice(type, L"/p/choice"), aside(type, L"/p/aside");
    registry.GetPluginTechnology(type)->SetPluginDirectories({L"/p"});
    registry.AddModule(MakeInfo(record, L"Kept"));
    registry.AddModule(MakeInfo(aside, L"Aside"));
    registry.AddModule(MakeInfo(choice));
    registry.Find(choice)->SetEnabled(false);
    registry.RemovePluginLocators({choice, aside});
    registry.SaveConfiguration(file, true);

    PluginModuleInfoManager loaded;
    ASSERT_TRUE(loaded.LoadConfiguration(file));
    EXPECT_EQ(Held(loaded, record).GetName(), L"Kept");
    EXPECT_EQ(FoldersOf(loaded, type), FoldersOf(registry, type));
    EXPECT_THAT(FoldersOf(loaded, type), ElementsAre(ToWide(std::filesystem::path("/p").make_preferred())));
    EXPECT_THAT(loaded.PutBackUnreached(), Contains(aside));
    loaded.AddModule(MakeInfo(choice));
    EXPECT_FALSE(Held(loaded, choice).IsEnabled());
}

TEST_P(LoadableFormatTest, AFileWithItsExtensionIsItsModuleAndNoOtherFormats)
{
    const std::filesystem::path module = plugins / ("a" + facts.extension);
    for (const std::string& name : {module.filename().string(), "b" + facts.extension + ".bak",
                                    facts.extension, facts.extension.substr(1)})
        zettesting::WriteAll(plugins / name, "12345");
    EXPECT_THAT(Search(plugins), ElementsAre(Found(module.filename().string())));

    const PluginLocator locator(type, ToWide(module));
    EXPECT_EQ(std::get<std::wstring>(FindModuleFiles(locator).library), ToWide(module));
    EXPECT_EQ(GetModuleFileStamp(locator).size, 5u);
    EXPECT_EQ(FindPresence(locator), FilePresence::Present);
    EXPECT_EQ(LocatorOfModuleFile(locator.GetPath()), locator);
}

TEST_P(LoadableFormatTest, AFolderWithItsExtensionIsABundleOrSearchedInside)
{
    const std::filesystem::path named = plugins / ("a" + facts.extension);
    std::filesystem::create_directories(named / "inside");
    std::vector<std::string> inside, wanted;
    for (const PluginFormat& each : PluginFormats()) {
        if (!each.IsOnThisPlatform())
            continue;
        const std::string title = "x" + zetcore::string::UTF16to8(std::wstring(each.files.extension));
        zettesting::WriteAll(named / "inside" / title, "");
        inside.push_back(zetcore::string::UTF16to8(std::wstring(each.name)) + " a" + facts.extension +
                         "/inside/" + title);
    }
    wanted = facts.hasBundles ? std::vector{Found("a" + facts.extension)} : inside;
    EXPECT_EQ(Search(plugins), wanted);
    EXPECT_EQ(Search(named), wanted) << "as the folder that is searched";
    EXPECT_EQ(FindPresence({type, ToWide(named)}),
              facts.hasBundles ? FilePresence::Present : FilePresence::Gone);
    const std::wstring part = ToWide(named / "inside" / "part.bin");
    EXPECT_EQ(LocatorOfModuleFile(part),
              facts.hasBundles ? PluginLocator(type, ToWide(named)) : PluginLocator());
}

TEST_P(BundledFormatTest, ARenamedBundleKeepsItsLibrary)
{
    const std::filesystem::path bundle = plugins / ("New" + facts.extension);
    const std::filesystem::path library = zettesting::BundleLibrary(bundle).replace_filename(
        "Old" + std::string(zettesting::BundleLibrarySuffix()));
    std::filesystem::create_directories(library.parent_path());
    zettesting::WriteAll(library, "123");
    const PluginLocator locator(type, ToWide(bundle));
    EXPECT_EQ(std::get<std::wstring>(FindModuleFiles(locator).library), ToWide(library));
    EXPECT_EQ(GetModuleFileStamp(locator).size, 3u);
}

TEST_P(FormatWithVariableTest, TheFoldersOfItsVariableComeFirst)
{
    const auto without = [this] {
        const zettesting::ScopedEnvironment none(*facts.pathVariable, std::nullopt);
        return DefaultFoldersOf(*format);
    }();
    EXPECT_FALSE(without.empty());
    const std::string separator(1, std::filesystem::path::preferred_separator == '/' ? ':' : ';');
    const zettesting::ScopedEnvironment two(*facts.pathVariable,
                                            "/first" + separator + separator + "/second" + separator);
    std::vector<std::wstring> wanted{L"/first", L"/second"};
    wanted.insert(wanted.end(), without.begin(), without.end());
    EXPECT_EQ(DefaultFoldersOf(*format), wanted);
}

std::string RowName(const ::testing::TestParamInfo<Facts>& row)
{
    return zetcore::string::UTF16to8(row.param.name);
}

template<class Has>
std::vector<Facts> FactsOf(Has has)
{
    std::vector<Facts> chosen = AllFacts();
    std::erase_if(chosen, [&has](const Facts& facts) { return !has(facts); });
    return chosen;
}

INSTANTIATE_TEST_SUITE_P(, PluginFormatTest, ::testing::ValuesIn(AllFacts()), RowName);
INSTANTIATE_TEST_SUITE_P(, LoadableFormatTest, ::testing::ValuesIn(FactsOf([](const Facts& facts) {
                             return !facts.extension.empty();
                         })),
                         RowName);
INSTANTIATE_TEST_SUITE_P(, BundledFormatTest,
                         ::testing::ValuesIn(FactsOf([](const Facts& facts) { return facts.hasBundles; })),
                         RowName);
INSTANTIATE_TEST_SUITE_P(, FormatWithVariableTest, ::testing::ValuesIn(FactsOf([](const Facts& facts) {
                             return facts.pathVariable.has_value();
                         })),
                         RowName);

TEST(LocatorOfModuleFile, GoesByTheExtensionAndByBundlesAround)
{
    const std::string suffix(zettesting::ModuleSuffix());
    const struct
    {
        std::string path;
        TechnologyType type;
        std::string module;
    } cases[] = {
        {"/p/a" + suffix, TechnologyType::VST, "/p/a" + suffix},
        {"/p/A.VST3", TechnologyType::VST3, "/p/A.VST3"},
        {"/p/a.vst3" + suffix, TechnologyType::VST, "/p/a.vst3" + suffix},
        {"/p/a.vst3/Contents/arch/a" + suffix, TechnologyType::VST3, "/p/a.vst3"},
        {"/p/a.vst3/Contents/b.vst3", TechnologyType::VST3, "/p/a.vst3"},
        {"/home/u/.vst3/a.vst3", TechnologyType::VST3, "/home/u/.vst3/a.vst3"},
        {"/p" + suffix + "/a.vst3", TechnologyType::VST3, "/p" + suffix + "/a.vst3"},
        {"//p/./a.vst3//x/", TechnologyType::VST3, "//p/./a.vst3"},
        {"a" + suffix, TechnologyType::VST, "a" + suffix},
        {"/p/a" + suffix + "/", TechnologyType::Unknown, ""},
        {"/home/u/.vst3", TechnologyType::Unknown, ""},
        {"/p/vst3", TechnologyType::Unknown, ""},
        {"/p/a.txt", TechnologyType::Unknown, ""},
        {"/p/a", TechnologyType::Unknown, ""},
        {"/p" + suffix + "/a", TechnologyType::Unknown, ""},
        {"", TechnologyType::Unknown, ""},
    };
    for (const auto& each : cases)
        EXPECT_EQ(LocatorOfModuleFile(ToWide(each.path)), PluginLocator(each.type, ToWide(each.module)))
            << each.path;
}

} // namespace

} // namespace zetaudiofilterhost
