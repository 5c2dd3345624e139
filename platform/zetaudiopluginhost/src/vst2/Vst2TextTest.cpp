#include "vst2/Vst2Text.h"

#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "vst2/Vst2Abi.h"
#include "vst2/Vst2Host.h"

namespace zetaudiopluginhost::vst2 {
namespace {

TEST(Vst2Text, VersionNumbersAreReadAsTheirMakersMeanThem)
{
    const struct
    {
        std::int64_t version;
        const wchar_t* text;
    } cases[] = {{0, L""},
                 {1, L"1"},
                 {99, L"99"},
                 {100, L"0.1.0.0"},
                 {930, L"0.9.3.0"},
                 {1100, L"1.1.0.0"},
                 {9999, L"9.9.9.9"},
                 {256, L"0.1.0"},
                 {0x010203, L"1.2.3"},
                 {0x01020304, L"1.2.3.4"},
                 {0x010000, L"1.0.0"},
                 {20230115, L"20230115"},
                 {-5, L"-5"},
                 {0x1FFFFFFFF, L"8589934591"}};
    for (const auto& one : cases)
        EXPECT_EQ(VersionText(one.version), one.text) << one.version;
}

TEST(Vst2Text, CategoriesHaveNames)
{
    EXPECT_EQ(CategoryText(CategoryEffect), L"Effect");
    EXPECT_EQ(CategoryText(CategoryShell), L"Shell");
    EXPECT_EQ(CategoryText(CategoryUnknown), L"");
    EXPECT_EQ(CategoryText(4711), L"");
}

TEST(Vst2Text, IdsAreUnsigned)
{
    EXPECT_EQ(IdText(-1), L"4294967295");
    EXPECT_EQ(IdText(42), L"42");
}

std::intptr_t Ask(std::int32_t opcode, void* pointer = nullptr)
{
    return Vst2Host::Answer(nullptr, opcode, 0, 0, pointer, 0);
}

TEST(Vst2Host, AnswersWhatPluginsAskWhileTheyLoad)
{
    const Vst2Host host(L"/plugins/folder/plugin.so");
    EXPECT_EQ(Ask(HostVersion), 2400);
    EXPECT_EQ(Ask(HostGetSampleRate), 44100);
    EXPECT_EQ(Ask(HostGetBlockSize), 512);
    EXPECT_EQ(Ask(HostGetLanguage), LanguageEnglish);
    EXPECT_EQ(Ask(4711), 0);

    char text[maxProductString + 1];
    std::memset(text, 'x', sizeof(text));
    EXPECT_EQ(Ask(HostGetProductString, text), 1);
    EXPECT_GT(std::strlen(text), 0u);
    EXPECT_LT(std::strlen(text), maxProductString);
    EXPECT_EQ(text[maxProductString], 'x');
    EXPECT_EQ(Ask(HostGetVendorString), 0);

    char ability[] = "shellCategory";
    char nonsense[] = "makeCoffee";
    EXPECT_EQ(Ask(HostCanDo, ability), 1);
    EXPECT_EQ(Ask(HostCanDo, nonsense), 0);
    EXPECT_EQ(Ask(HostCanDo), 0);

    const auto* time = reinterpret_cast<const TimeInfo*>(Ask(HostGetTime));
    ASSERT_NE(time, nullptr);
    EXPECT_EQ(time->sampleRate, 44100);
    EXPECT_EQ(time->tempo, 120);
    const char* folder = reinterpret_cast<const char*>(Ask(HostGetDirectory));
    ASSERT_NE(folder, nullptr);
    EXPECT_EQ(std::string(folder), "/plugins/folder");
}

TEST(Vst2Host, TheCurrentIdIsTheShellsUntilASubPluginIsMade)
{
    {
        const Vst2Host host(L"/plugins/shell.so");
        EXPECT_EQ(Ask(HostCurrentId), 0);
        Vst2Host::SetCurrentId(77);
        EXPECT_EQ(Ask(HostCurrentId), 77);
    }
    EXPECT_EQ(Ask(HostCurrentId), 0);
}

TEST(Vst2Text, MarkersOfShellsReadAlikeAndLetterCaseIsApart)
{
    const std::wstring shell = ShellComparisonName(L"/vst/WaveHouse-VST 12.so");
    EXPECT_EQ(ShellComparisonName(L"/vst3/wavehouse-vst3 12.vst3"), shell);
    EXPECT_EQ(ShellComparisonName(L"/vst/WaveHouse-VST2 12.so"), shell);
    EXPECT_NE(ShellComparisonName(L"/vst/WaveHouse-VST 13.so"), shell);
    EXPECT_NE(ShellComparisonName(L"/vst/WaveHouse-VST 12 More.so"), shell);
    EXPECT_NE(ShellComparisonName(L"/a/VST30.so"), ShellComparisonName(L"/a/VST20.so"));
}

} // namespace
} // namespace zetaudiopluginhost::vst2
