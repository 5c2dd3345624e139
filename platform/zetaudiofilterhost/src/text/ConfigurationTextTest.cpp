#include "text/ConfigurationText.h"

#include <gtest/gtest.h>

#include "testing/RegistryFixture.h"

namespace zetaudiofilterhost {

namespace {

class ConfigurationTextTest : public RegistryFixture
{
  protected:
    static std::string Whole(const std::string& content, const std::string& version = "1.0")
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<audioplugins version=\"" + version + "\">\n" +
               content + "</audioplugins>\n";
    }
    static Configuration Read(const std::string& text) { return ReadConfiguration(text, "file.xml"); }
    static std::string ErrorOf(const std::string& text)
    {
        try {
            Read(text);
        } catch (const ConfigurationError& error) {
            return error.what();
        }
        return "no error";
    }
};

TEST_F(ConfigurationTextTest, EveryFieldOfARecordComesBack)
{
    PluginModuleInfo info(PluginLocator(TechnologyType::VST3, L"/vst3/Some | Verb.vst3", L"Class <2>"));
    info.SetName(L"Some \"Verb\" & more");
    info.SetProduct(L"\u65e5\u672c");
    info.SetVendor(L"Vendor's");
    info.SetVersionString(L"2.10");
    info.SetCategory(L"Fx|Reverb");
    info.SetUniqueId(L"0123456789ABCDEF0123456789ABCDEF");
    info.SetNumericVersion(-7);
    info.SetFileStamp(18446744073709551615u, -1);
    info.SetEnabled(false);
    info.SetHasAnySynth(true);
    info.SetHasAnyNonSynthEffect(true);
    info.SetStatus(ModuleStatus::Failed);
    info.SetReason("two\nlines");

    Configuration configuration;
    configuration.modules = {std::make_shared<PluginModuleInfo>(info)};
    const Configuration back = Read(WriteConfiguration(configuration));
    ASSERT_EQ(back.modules.size(), 1u);
    const PluginModuleInfo& read = *back.modules[0];
    EXPECT_EQ(read.GetLocator(), info.GetLocator());
    EXPECT_EQ(read.GetName(), info.GetName());
    EXPECT_EQ(read.GetProduct(), info.GetProduct());
    EXPECT_EQ(read.GetVendor(), info.GetVendor());
    EXPECT_EQ(read.GetVersionString(), info.GetVersionString());
    EXPECT_EQ(read.GetCategory(), info.GetCategory());
    EXPECT_EQ(read.GetUniqueId(), info.GetUniqueId());
    EXPECT_EQ(read.GetNumericVersion(), info.GetNumericVersion());
    EXPECT_EQ(read.GetFileSize(), info.GetFileSize());
    EXPECT_EQ(read.GetFileTime(), info.GetFileTime());
    EXPECT_EQ(read.IsEnabled(), info.IsEnabled());
    EXPECT_EQ(read.HasAnySynth(), info.HasAnySynth());
    EXPECT_EQ(read.HasAnyNonSynthEffect(), info.HasAnyNonSynthEffect());
    EXPECT_EQ(read.GetStatus(), info.GetStatus());
    EXPECT_EQ(read.GetReason(), info.GetReason());
}

TEST_F(ConfigurationTextTest, EveryStatusHasItsWord)
{
    for (const ModuleStatus status : {ModuleStatus::Working, ModuleStatus::Failed, ModuleStatus::NotAPlugin,
                                      ModuleStatus::Skipped, ModuleStatus::Unscanned})
        EXPECT_EQ(StatusFromWord(StatusWord(status)), status);
    EXPECT_EQ(StatusFromWord("Working"), std::nullopt);
}

TEST_F(ConfigurationTextTest, AttributesThatAreLeftOutHaveTheirDefaults)
{
    const Configuration read = Read(Whole("<module locator=\"VST|/a.so|\"/>"));
    ASSERT_EQ(read.modules.size(), 1u);
    EXPECT_TRUE(read.modules[0]->IsEnabled());
    EXPECT_EQ(read.modules[0]->GetStatus(), ModuleStatus::Working);
    EXPECT_FALSE(read.modules[0]->HasAnySynth());
    EXPECT_EQ(read.modules[0]->GetName(), L"");
}

TEST_F(ConfigurationTextTest, TextsThatXmlCannotHoldDoNotBreakIt)
{
    const auto info = MakeInfo(Vst({L'/', static_cast<wchar_t>(0xdcff), L'\x01'}, L"\x02"),
                               {L'n', L'\x00', L'\x1b', static_cast<wchar_t>(0xdc80), L'\uffff'});
    info->SetReason("bytes \xFF\x01\xC3");
    Configuration configuration;
    configuration.modules = {info};
    const Configuration back = Read(WriteConfiguration(configuration));
    ASSERT_EQ(back.modules.size(), 1u);
    EXPECT_EQ(back.modules[0]->GetLocator(), info->GetLocator());
    EXPECT_EQ(back.modules[0]->GetName(), L"n  \ufffd\ufffd");
    EXPECT_EQ(back.modules[0]->GetReason(), "bytes \xEF\xBF\xBD \xEF\xBF\xBD");
}

TEST_F(ConfigurationTextTest, UnknownElementsAndAttributesSurviveAtEveryLevel)
{
    const std::string text = Whole(
        "  <technology name=\"VST\" order=\"date\">\n"
        "    <folder path=\"/usr/lib/vst\" depth=\"3\"><skip name=\"x&amp;y\" /></folder>\n"
        "    <exclude path=\"/tmp\" />\n"
        "  </technology>\n"
        "  <technology name=\"LV2\"><folder path=\"/lv2\" /></technology>\n"
        "  <module locator=\"VST|/a.so|\" stars=\"5 &lt; 6\"><tag>quiet &amp; warm</tag><tag /></module>\n"
        "  <choice locator=\"VST|/b.so|\" enabled=\"false\" stars=\"1\"><note /></choice>\n"
        "  <layout><column width=\"10\" /></layout>\n",
        "1.0\" theme=\"dark");
    const std::string once = WriteConfiguration(Read(text));
    EXPECT_EQ(WriteConfiguration(Read(once)), once);
    for (const std::string kept :
         {" theme=\"dark\"", " order=\"date\"", " depth=\"3\"", "<skip name=\"x&amp;y\"",
          "<exclude path=\"/tmp\"", "<technology name=\"LV2\"><folder path=\"/lv2\"", " stars=\"5 &lt; 6\"",
          "<tag>quiet &amp; warm</tag><tag", " stars=\"1\"", "<note", "<layout><column width=\"10\""})
        EXPECT_NE(once.find(kept), once.npos) << kept << " in " << once;
}

TEST_F(ConfigurationTextTest, DamageIsNamedWithTextAndLine)
{
    struct Case
    {
        std::string text, error;
    };
    const Case cases[] = {
        {"", "file.xml, line 1: No document element found"},
        {"\n\nrubbish", "file.xml, line 3: No document element found"},
        {"<audioplugins version=\"1.0\">\n<module locator=", "file.xml, line 2: "},
        {"<audioplugins version=\"1.0\">\n<module>\n</audioplugins>",
         "file.xml, line 3: Start-end tags mismatch"},
        {"<banned version=\"1.0\"/>", "file.xml, line 1: the element is \"banned\", not \"audioplugins\""},
        {"<audioplugins/>", "file.xml, line 1: attribute version is missing"},
        {"<audioplugins version=\"new\"/>", "file.xml, line 1: attribute version: \"new\" is no version"},
        {"<audioplugins version=\"1.0\"/>\n<audioplugins version=\"1.0\"/>",
         "file.xml, line 2: a second element behind the first"},
        {"<audioplugins version=\"1.0\"/>\n rest", "file.xml, line 2: text behind the last element"},
        {"rest <audioplugins version=\"1.0\"/>", "file.xml, line 1: text before the first element"},
        {Whole("\n<module locator=\"VST|/\xFF|\"/>"), "file.xml, line 4: a byte that is not UTF-8 text"},
        {std::string("<audioplugins version=\"1.0\">\n\0</audioplugins>", 45),
         "file.xml, line 2: a byte that is not UTF-8 text"},
        {Whole("<module locator=\"VST|/a|\"/>\nrest"), "file.xml, line 3: text between the elements"},
        {Whole("<module/>"), "file.xml, line 3: element module, attribute locator is missing"},
        {Whole("<module locator=\"/a.so\"/>"),
         "file.xml, line 3: element module, attribute locator: \"/a.so\" names no plug-in"},
        {Whole("<module locator=\"VST|/a|\"/>\n<module locator=\"VST|/b|\" size=\"12k\"/>"),
         "file.xml, line 4: element module, attribute size: \"12k\" is no number that fits"},
        {Whole("<module locator=\"VST|/a|\" size=\"-1\"/>"),
         "file.xml, line 3: element module, attribute size: \"-1\" is no number that fits"},
        {Whole("<module locator=\"VST|/a|\" time=\"9223372036854775808\"/>"),
         "file.xml, line 3: element module, attribute time: \"9223372036854775808\" is no number that fits"},
        {Whole("<module locator=\"VST|/a|\" numericversion=\"\"/>"),
         "file.xml, line 3: element module, attribute numericversion: \"\" is no number that fits"},
        {Whole("<module locator=\"VST|/a|\" enabled=\"yes\"/>"),
         "file.xml, line 3: element module, attribute enabled: \"yes\" is neither true nor false"},
        {Whole("<module locator=\"VST|/a|\" status=\"great\"/>"),
         "file.xml, line 3: element module, attribute status: \"great\" is no known status"},
        {Whole("<choice locator=\"VST|/a|\" enabled=\"0\"/>"),
         "file.xml, line 3: element choice, attribute enabled: \"0\" is neither true nor false"},
        {Whole("<technology name=\"VST\">\n<folder path=\"/%\"/></technology>"),
         "file.xml, line 4: element folder, attribute path: \"/%\" names no folder"},
        {Whole("<technology name=\"VST\"><folder/></technology>"),
         "file.xml, line 3: element folder, attribute path: \"\" names no folder"},
    };
    for (const Case& test : cases)
        EXPECT_EQ(ErrorOf(test.text).substr(0, test.error.size()), test.error) << test.text;
}

TEST_F(ConfigurationTextTest, ANewerVersionsFileGivesWhatWeKnowAndKeepsTheRest)
{
    const std::string text = Whole("<module locator=\"VST|/a.so|\" name=\"Good\"/>\n"
                                   "<module locator=\"LV2|/b.lv2|\" name=\"Other\"/>\n"
                                   "<module locator=\"VST|/c.so|\" status=\"quarantined\"/>\n"
                                   "<technology name=\"VST\"><folder path=\"/%new\"/><folder path=\"/old\"/>"
                                   "</technology>\n",
                                   "2.0");
    const Configuration read = Read(text);
    ASSERT_EQ(read.modules.size(), 1u);
    EXPECT_EQ(read.modules[0]->GetName(), L"Good");
    ASSERT_EQ(read.technologies.size(), 1u);
    ASSERT_EQ(read.technologies[0].folders.size(), 1u);
    EXPECT_EQ(read.technologies[0].folders[0].path, L"/old");
    EXPECT_TRUE(HasTraced("file.xml, line 4: element module, attribute locator"));
    const std::string saved = WriteConfiguration(read);
    for (const std::string kept : {"version=\"2.0\"", "LV2|/b.lv2|", "quarantined", "<folder path=\"/%new\""})
        EXPECT_NE(saved.find(kept), saved.npos) << kept;
    EXPECT_EQ(WriteConfiguration(Read(saved)), saved);
}

TEST_F(ConfigurationTextTest, NoNestingIsTooDeepToKeep)
{
    std::string nested;
    for (int i = 0; i < 300'000; ++i)
        nested += "<a>";
    for (int i = 0; i < 300'000; ++i)
        nested += "</a>";
    const Configuration read = Read(Whole("<module locator=\"VST|/a.so|\">" + nested + "</module>", "2.0"));
    EXPECT_EQ(read.modules.size(), 1u);
    EXPECT_EQ(Read(WriteConfiguration(read)).modules.size(), 1u);
}

TEST_F(ConfigurationTextTest, ManyElementsThatCannotBeReadAreTracedInOnePass)
{
    std::string elements;
    for (int i = 0; i < 200'000; ++i)
        elements += "<module/>\n";
    EXPECT_EQ(Read(Whole(elements + "<module locator=\"VST|/a.so|\"/>", "2.0")).modules.size(), 1u);
}

TEST_F(ConfigurationTextTest, AnOlderOrEqualVersionIsWrittenAsOurs)
{
    EXPECT_EQ(Read(Whole("", "0.9")).version, configurationVersion);
    EXPECT_EQ(Read(Whole("", "1.1")).version, configurationVersion);
    EXPECT_EQ(Read(Whole("", "1.2")).version, "1.2");
}

TEST_F(ConfigurationTextTest, AByteOrderMarkIsAllowed)
{
    EXPECT_EQ(Read("\xEF\xBB\xBF" + Whole("<module locator=\"VST|/a.so|\"/>")).modules.size(), 1u);
}

TEST_F(ConfigurationTextTest, FoldersWithOddNamesComeBack)
{
    const std::wstring odd{L'/', static_cast<wchar_t>(0xdcff), L'\n', L'%', L'|'};
    Configuration configuration;
    configuration.technologies.push_back({TechnologyType::VST3, {{odd, {}}, {L"/plain", {}}}, {}});
    const Configuration back = Read(WriteConfiguration(configuration));
    ASSERT_EQ(back.technologies.size(), 1u);
    EXPECT_EQ(back.technologies[0].type, TechnologyType::VST3);
    ASSERT_EQ(back.technologies[0].folders.size(), 2u);
    EXPECT_EQ(back.technologies[0].folders[0].path, odd);
    EXPECT_EQ(back.technologies[0].folders[1].path, L"/plain");
}

TEST_F(ConfigurationTextTest, ChangesComeBackInTheirOrder)
{
    const std::vector<RegistryChange> changes{
        {Vst(L"/a.so"), MakeInfo(Vst(L"/a.so"), L"A"), std::nullopt},
        {Vst(L"/b.so"), nullptr, RememberedChoice{false, {{{"stars", "5"}}, "<x />"}}},
        {Vst(L"/c.so", L"sub"), nullptr, std::nullopt},
    };
    const std::vector<RegistryChange> back = ReadChanges(WriteChanges(changes), "journal");
    ASSERT_EQ(back.size(), 3u);
    EXPECT_EQ(back[0].locator, Vst(L"/a.so"));
    ASSERT_TRUE(back[0].info);
    EXPECT_EQ(back[0].info->GetName(), L"A");
    EXPECT_EQ(back[1].locator, Vst(L"/b.so"));
    ASSERT_TRUE(back[1].choice);
    EXPECT_FALSE(back[1].choice->enabled);
    EXPECT_EQ(back[1].choice->unknown.attributes.at(0).second, "5");
    EXPECT_EQ(back[1].choice->unknown.children, "<x/>");
    EXPECT_EQ(back[2].locator, Vst(L"/c.so", L"sub"));
    EXPECT_FALSE(back[2].info || back[2].choice);
}

} // namespace

} // namespace zetaudiofilterhost
