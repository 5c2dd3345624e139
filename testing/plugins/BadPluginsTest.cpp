#include <stdexcept>

#include <gmock/gmock.h>

#include "LoadedPlugin.h"

// These bad plug-ins can be loaded without losing the process.
namespace zettesting {
namespace {

TEST(BadPlugins, NoEntryPointLoadsAndHasNone)
{
    const auto library = LoadLibraryOf("bad/no_entry_point");
    EXPECT_THROW(EntryOf(library), std::runtime_error);
    EXPECT_FALSE(library.has(vst3::factoryEntryName));
}

TEST(BadPlugins, ReturnsNullGivesNoEffect)
{
    EXPECT_EQ(CreateEffect(LoadLibraryOf("bad/returns_null")), nullptr);
}

TEST(BadPlugins, WrongMagicGivesSomethingElse)
{
    const auto library = LoadLibraryOf("bad/wrong_magic");
    const vst2::Effect* effect = EntryOf(library)(&AnswerAsHost);
    ASSERT_NE(effect, nullptr);
    EXPECT_NE(effect->magic, vst2::effectMagic);
    EXPECT_EQ(effect->dispatcher, nullptr);
}

TEST(BadPlugins, ThrowsExceptionLetsItOutOfItsEntry)
{
    const auto library = LoadLibraryOf("bad/throws_exception");
    EXPECT_THROW(EntryOf(library)(&AnswerAsHost), std::runtime_error);
}

TEST(BadPlugins, UnterminatedNamesFillTheBuffersToTheirDocumentedSizes)
{
    const auto library = LoadLibraryOf("bad/unterminated_names");
    const EffectPointer effect = CreateEffect(library);
    for (const auto& [opcode, size] : {std::pair{vst2::EffectGetEffectName, vst2::maxEffectName},
                                       std::pair{vst2::EffectGetVendorString, vst2::maxVendorString},
                                       std::pair{vst2::EffectGetProductString, vst2::maxProductString}}) {
        char text[vst2::generousStringBuffer];
        std::memset(text, '?', sizeof(text));
        effect->dispatcher(effect.get(), opcode, 0, 0, text, 0.0f);
        const std::string_view written(text, sizeof(text));
        EXPECT_EQ(written.find('?'), size);
        EXPECT_EQ(written.find('\0'), std::string_view::npos);
    }
}

TEST(BadPlugins, InvalidUtf8NamesHaveBytesThatUtf8DoesNotHave)
{
    const auto library = LoadLibraryOf("bad/invalid_utf8_names");
    const EffectPointer effect = CreateEffect(library);
    EXPECT_EQ(AskText(*effect, vst2::EffectGetEffectName), "Caf\xE9 Verb \xFF\xFE");
    EXPECT_EQ(AskText(*effect, vst2::EffectGetVendorString), "M\xFCller \xE2\x82");
}

TEST(BadPlugins, EndlessShellGoesOnForLongerThanAnybodyWaits)
{
    const auto library = LoadLibraryOf("bad/endless_shell");
    const EffectPointer effect = CreateEffect(library);
    EXPECT_EQ(AskNumber(*effect, vst2::EffectGetPlugCategory), vst2::CategoryShell);
    char name[vst2::generousStringBuffer] = {};
    for (std::intptr_t i = 1; i <= 200'000; ++i)
        ASSERT_EQ(effect->dispatcher(effect.get(), vst2::EffectShellGetNextPlugin, 0, 0, name, 0.0f), i);
    EXPECT_STREQ(name, "Endless 200000");
}

TEST(BadPlugins, Vst3NullFactoryIsEnteredAndGivesNull)
{
    EXPECT_EQ(EnteredModule("bad/vst3_null_factory").Factory(), nullptr);
}

TEST(BadPlugins, Vst3UnterminatedNamesFillTheirArrays)
{
    const EnteredModule module("bad/vst3_unterminated_names");
    const auto factory = module.Factory();
    vst3::PFactoryInfo factoryInfo{};
    vst3::PClassInfo info{};
    vst3::PClassInfo2 info2{};
    factory->GetFactoryInfo(&factoryInfo);
    factory->GetClassInfo(0, &info);
    Query<vst3::IPluginFactory2>(*factory)->GetClassInfo2(0, &info2);
    EXPECT_EQ(Text(factoryInfo.vendor).size(), sizeof(factoryInfo.vendor));
    EXPECT_EQ(Text(info.name).size(), sizeof(info.name));
    EXPECT_EQ(Text(info2.name).size(), sizeof(info2.name));
    EXPECT_EQ(Text(info2.version).size(), sizeof(info2.version));
}

TEST(BadPlugins, ThoseThatSpoilOnlyOthersWorkWhenTheyAreAlone)
{
    const auto library = LoadLibraryOf("bad/crashes_when_poisoned");
    const EffectPointer effect = CreateEffect(library);
    EXPECT_EQ(AskText(*effect, vst2::EffectGetEffectName), "Crashes When Poisoned");
}

} // namespace
} // namespace zettesting
