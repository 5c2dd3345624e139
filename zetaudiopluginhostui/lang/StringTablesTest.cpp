// These tests compare the string tables with the texts that the program asks for.
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <regex>

#include <gmock/gmock.h>
#include <zetaudiopluginhost/ReasonSentences.h>
#include <zetcore/config/Localizer.h>
#include <zettesting/TemporaryFolder.h>

#include "testing/SourceTexts.h"

namespace zetaudiopluginhostui {
namespace {

using testing::ElementsAre;
using zetcore::config::Localizer;
using Strings = std::vector<std::string>;

const std::filesystem::path projectFolder = ZET_PROJECT_FOLDER;
const std::filesystem::path tablesFolder = projectFolder / "zetaudiopluginhostui/lang";
const std::filesystem::path programTablesFolder = ZET_PROGRAM_TABLES_FOLDER;
const std::string languages[] = {"de", "en", "es", "fr", "ja", "zh-Hans"};

const SourceTexts& Texts()
{
    static const SourceTexts texts = [] {
        SourceTexts all;
        for (const char* const part : {"platform", "zetaudiopluginhostui", "host", "scanner"})
            for (auto& [key, defaults] : CollectSourceTexts(projectFolder / part))
                all[key].insert(defaults.begin(), defaults.end());
        return all;
    }();
    return texts;
}

Strings TablesIn(const std::filesystem::path& folder)
{
    Strings names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".txt" && entry.path().filename() != "CMakeLists.txt")
            names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

/// Every occurrence of the pattern, sorted.
Strings Found(const std::string& text, const char* pattern)
{
    const std::regex expression(pattern);
    Strings found;
    for (std::sregex_iterator each(text.begin(), text.end(), expression), end; each != end; ++each)
        found.push_back(each->str());
    std::sort(found.begin(), found.end());
    return found;
}

/// Stands for a mark at the end of a text. A text and its translation end with the same kind of mark, which
/// Chinese and Japanese write with characters of their own. 0 for texts without such a mark.
char End(const std::string& text)
{
    for (const auto& [end, meaning] : {std::pair{"...", '+'},
                                       {"\xEF\xBC\x9A", ':'},
                                       {":", ':'},
                                       {"\xE3\x80\x82", '.'},
                                       {".", '.'},
                                       {"\xEF\xBC\x9F", '?'},
                                       {"?", '?'}})
        if (text.ends_with(end))
            return meaning;
    return 0;
}

TEST(StringTables, ThereIsOneForEachLanguage)
{
    EXPECT_EQ(TablesIn(tablesFolder), Strings(std::begin(languages), std::end(languages)));
}

TEST(StringTables, StandBesideTheProgram)
{
    EXPECT_EQ(TablesIn(programTablesFolder), TablesIn(tablesFolder));
    for (const std::string& name : TablesIn(tablesFolder))
        EXPECT_TRUE(zettesting::ReadAll(programTablesFolder / (name + ".txt")) ==
                    zettesting::ReadAll(tablesFolder / (name + ".txt")))
            << name;
}

TEST(StringTables, EveryTextHasOneDefault)
{
    EXPECT_GT(Texts().size(), 40u);
    for (const auto& [key, defaults] : Texts())
        EXPECT_EQ(defaults.size(), 1u) << key << ": " << testing::PrintToString(defaults);
}

/// "zhHans".
std::string NameOfLanguage(const testing::TestParamInfo<std::string>& language)
{
    std::string name = language.param;
    std::erase(name, '-');
    return name;
}

class StringTable : public testing::TestWithParam<std::string>
{
  protected:
    StringTable() { Localizer::Get().LoadTableFromText(zettesting::ReadAll(File()), GetParam()); }
    ~StringTable() override { Localizer::Get().Reset(); }
    static std::filesystem::path File() { return tablesFolder / (GetParam() + ".txt"); }
    /// The keys of the table, sorted.
    static Strings Keys()
    {
        Strings keys;
        for (const std::string& start : Found(zettesting::ReadAll(File()), "(^|\n)\"[^\"]*\"="))
            keys.push_back(start.substr(start.find('"') + 1, start.rfind('"') - start.find('"') - 1));
        return keys;
    }
    /// Calls `check` with key, default text and the table's text.
    template<typename Check>
    static void ForEachText(const Check& check)
    {
        for (const auto& [key, defaults] : Texts()) {
            SCOPED_TRACE(key);
            check(*defaults.begin(), Localizer::Get().Localize(key));
        }
    }
};

TEST_P(StringTable, HasEveryTextAndNoOther)
{
    const Strings keys = Keys();
    for (const auto& text : Texts())
        EXPECT_NE(std::find(keys.begin(), keys.end(), text.first), keys.end()) << "lacks " << text.first;
    for (const std::string& key : keys)
        EXPECT_TRUE(Texts().contains(key)) << "nothing asks for " << key;
}

TEST_P(StringTable, HasNoEmptyTextAndTheSpacesOfTheDefaultAroundIt)
{
    ForEachText([](const std::string& english, const std::string& text) {
        EXPECT_FALSE(text.empty());
        EXPECT_EQ(Found(text, "^[ \t\n]+"), Found(english, "^[ \t\n]+"));
        EXPECT_EQ(Found(text, "[ \t\n]+$"), Found(english, "[ \t\n]+$"));
        EXPECT_EQ(text.find("  "), std::string::npos);
    });
}

TEST_P(StringTable, KeepsPlaceholdersProductNameAndMnemonics)
{
    ForEachText([](const std::string& english, const std::string& text) {
        constexpr const char* kept = "@[0-9]+|@[A-Za-z]*|Sondrel|&&|&";
        EXPECT_EQ(Found(text, kept), Found(english, kept)) << text;
    });
}

TEST_P(StringTable, EndsTextsAsTheDefaultsEnd)
{
    ForEachText([](const std::string& english, const std::string& text) {
        EXPECT_EQ(End(text), End(english)) << text;
    });
}

TEST_P(StringTable, SaysInItsLanguageEachReasonThatWasWrittenDownInEnglish)
{
    int reasons = 0;
    for (const auto& [key, defaults] : Texts()) {
        if (!key.starts_with("$$$/AudioPluginManager/Reason/"))
            continue;
        ++reasons;
        const Strings arguments{"/one/x.so", "2", "three"};
        const std::string english = Localizer().Localize(key + "=" + *defaults.begin(), arguments);
        EXPECT_EQ(zetaudiopluginhost::reasons::InLanguage(english, Localizer::Get()),
                  Localizer::Get().Localize(key, arguments))
            << key;
    }
    EXPECT_GT(reasons, 80);
}

INSTANTIATE_TEST_SUITE_P(Languages, StringTable, testing::ValuesIn(languages), NameOfLanguage);

class EnglishTable : public StringTable
{};

TEST_P(EnglishTable, HoldsTheDefaultTexts)
{
    ForEachText([](const std::string& english, const std::string& text) { EXPECT_EQ(text, english); });
}

INSTANTIATE_TEST_SUITE_P(Languages, EnglishTable, testing::Values("en"), NameOfLanguage);

class FrenchTable : public StringTable
{};

TEST_P(FrenchTable, KeepsMarksTogetherWithTheirWords)
{
    ForEachText([](const std::string&, const std::string& text) {
        constexpr const char* markWithoutFirmSpace = "(^|[^\xA0])([:;!?]|\xC2\xBB)|\xC2\xAB($|[^\xC2])";
        EXPECT_THAT(Found(text, markWithoutFirmSpace), ElementsAre()) << text;
        EXPECT_EQ(text.find('\''), std::string::npos) << "a straight apostrophe in " << text;
    });
}

INSTANTIATE_TEST_SUITE_P(Languages, FrenchTable, testing::Values("fr"), NameOfLanguage);

} // namespace
} // namespace zetaudiopluginhostui
