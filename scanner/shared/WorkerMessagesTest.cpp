#include "WorkerMessages.h"

#include <stdexcept>

#include <gtest/gtest.h>
#include <zetaudiofilterhost/PluginModuleInfo.h>

namespace zetaudiofilterscan {
namespace {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::PluginFailure;
using zetaudiopluginhost::ScanOutcome;
using zetaudiopluginhost::ScanPhase;

const PluginLocator oddLocator(TechnologyType::VST, L"/odd|name\n\xDC80%.so", L"part 1");

std::shared_ptr<PluginModuleInfo> SomeRecord()
{
    auto info = std::make_shared<PluginModuleInfo>(oddLocator);
    info->SetName(L"Gr\u00FC\u00DF & <b>");
    info->SetProduct(L"stray \xDC80 unit");
    info->SetVendor(L"line\nend");
    info->SetVersionString(L"1.2.3.4");
    info->SetCategory(L"Effect");
    info->SetUniqueId(L"1234");
    info->SetNumericVersion(-5'000'000'000);
    info->SetFileStamp(6'000'000'000, -7);
    info->SetHasAnyNonSynthEffect(true);
    info->SetStatus(ModuleStatus::Unreadable);
    info->SetReason(std::string("\xFF\0why", 5));
    return info;
}

EntityAnswer SomeAnswer()
{
    ScanOutcome outcome;
    outcome.misbehaved = true;
    outcome.couldNotLoad = true;
    outcome.failure = {.kind = PluginFailure::lastKind,
                       .phase = ScanPhase::Unload,
                       .details = {"it said \"no\"\n", "", "2"}};
    outcome.infos = {SomeRecord(), std::make_shared<PluginModuleInfo>(
                                       PluginLocator(TechnologyType::VST, oddLocator.GetPath()))};
    return {7, outcome};
}

TEST(WorkerMessages, SettingsComeBackAsTheyWere)
{
    WorkerSettings settings;
    settings.preferencesFolder = L"/home/someone/\xDCFF";
    settings.traceVolume = -3;
    settings.options = {true, false};
    settings.refuseNetwork = false;
    settings.refuseWriting = false;
    settings.writable = {L"/one", L"/odd \xDCFF"};
    settings.hideDisplay = true;

    const auto decoded = std::get<WorkerSettings>(DecodeCommand(EncodeCommand(settings)));
    EXPECT_EQ(decoded.preferencesFolder, settings.preferencesFolder);
    EXPECT_EQ(decoded.traceVolume, settings.traceVolume);
    EXPECT_TRUE(decoded.options.disableShellSkipping);
    EXPECT_FALSE(decoded.options.quickEffectScan);
    EXPECT_FALSE(decoded.refuseNetwork);
    EXPECT_FALSE(decoded.refuseWriting);
    EXPECT_EQ(decoded.writable, settings.writable);
    EXPECT_TRUE(decoded.hideDisplay);
}

TEST(WorkerMessages, ARequestComesBackAsItWas)
{
    for (const bool onOneProcessor : {false, true}) {
        const EntityRequest request{42, oddLocator, onOneProcessor};
        const auto decoded = std::get<EntityRequest>(DecodeCommand(EncodeCommand(request)));
        EXPECT_EQ(decoded.number, 42U);
        EXPECT_EQ(decoded.locator, oddLocator);
        EXPECT_EQ(decoded.onOneProcessor, onOneProcessor);
    }
}

TEST(WorkerMessages, ALocatorComesBackWithEveryUnit)
{
    for (const wchar_t* path :
         {L"/gr\u00FC\u00DF", L"/\xDCC3\xDCBC", L"/\xD83C", L"/a|b%7C\n", L"/\uFFFF\xDC80\U0001F39B"}) {
        const PluginLocator locator(TechnologyType::VST3, path, std::wstring(path) + L" part");
        EXPECT_EQ(std::get<EntityRequest>(DecodeCommand(EncodeCommand(EntityRequest{1, locator}))).locator,
                  locator);
    }
}

TEST(WorkerMessages, ALocatorWithoutPathOrTechnologyIsRefused)
{
    for (const PluginLocator& locator : {PluginLocator(), PluginLocator(TechnologyType::VST, L""),
                                         PluginLocator(TechnologyType::Unknown, L"/a")})
        EXPECT_THROW(DecodeCommand(EncodeCommand(EntityRequest{1, locator})), std::runtime_error);
}

TEST(WorkerMessages, TheKnownModulesAreAskedForAndComeBackAsTheyWere)
{
    EXPECT_TRUE(
        std::holds_alternative<KnownModulesQuestion>(DecodeReport(EncodeReport(KnownModulesQuestion()))));
    const KnownModules known{{oddLocator, PluginLocator(TechnologyType::VST3, L"/b.vst3")}};
    EXPECT_EQ(std::get<KnownModules>(DecodeCommand(EncodeCommand(known))).locators, known.locators);
}

TEST(WorkerMessages, AnAnswerComesBackAsItWas)
{
    const auto decoded = std::get<EntityAnswer>(DecodeReport(EncodeReport(SomeAnswer())));
    EXPECT_EQ(decoded.number, 7U);
    EXPECT_TRUE(decoded.outcome.misbehaved);
    EXPECT_TRUE(decoded.outcome.couldNotLoad);
    EXPECT_EQ(decoded.outcome.failure, SomeAnswer().outcome.failure);
    ASSERT_EQ(decoded.outcome.infos.size(), 2U);
    EXPECT_EQ(decoded.outcome.infos[1]->GetLocator(), SomeAnswer().outcome.infos[1]->GetLocator());
    EXPECT_EQ(decoded.outcome.infos[1]->GetStatus(), ModuleStatus::Working);
}

TEST(WorkerMessages, ARecordComesBackWithEveryField)
{
    const auto decoded = std::get<EntityAnswer>(DecodeReport(EncodeReport(SomeAnswer())));
    const PluginModuleInfo& info = *decoded.outcome.infos.at(0);
    EXPECT_EQ(info.GetLocator(), oddLocator);
    EXPECT_EQ(info.GetName(), SomeRecord()->GetName());
    EXPECT_EQ(info.GetProduct(), SomeRecord()->GetProduct());
    EXPECT_EQ(info.GetVendor(), SomeRecord()->GetVendor());
    EXPECT_EQ(info.GetVersionString(), L"1.2.3.4");
    EXPECT_EQ(info.GetCategory(), L"Effect");
    EXPECT_EQ(info.GetUniqueId(), L"1234");
    EXPECT_EQ(info.GetNumericVersion(), -5'000'000'000);
    EXPECT_EQ(info.GetFileSize(), 6'000'000'000U);
    EXPECT_EQ(info.GetFileTime(), -7);
    EXPECT_TRUE(info.HasAnyNonSynthEffect());
    EXPECT_FALSE(info.HasAnySynth());
    EXPECT_EQ(info.GetStatus(), ModuleStatus::Unreadable);
    EXPECT_EQ(info.GetReason(), SomeRecord()->GetReason());
}

TEST(WorkerMessages, OnlyAPluginThatMisbehavedCouldNotBeLoaded)
{
    EntityAnswer answer = SomeAnswer();
    answer.outcome.misbehaved = false;
    EXPECT_FALSE(std::get<EntityAnswer>(DecodeReport(EncodeReport(answer))).outcome.couldNotLoad);
}

TEST(WorkerMessages, ATraceLineComesBackAsItWas)
{
    const auto decoded =
        std::get<WorkerTrace>(DecodeReport(EncodeReport(WorkerTrace{6, "Category", "text\r\n"})));
    EXPECT_EQ(decoded.level, 6);
    EXPECT_EQ(decoded.category, "Category");
    EXPECT_EQ(decoded.text, "text\r\n");
}

TEST(WorkerMessages, AMessageCutOffAnywhereIsRefused)
{
    const std::string whole = EncodeReport(SomeAnswer());
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_THROW(DecodeReport(whole.substr(0, length)), std::runtime_error) << length;
}

TEST(WorkerMessages, BytesLeftOverAreRefused)
{
    EXPECT_THROW(DecodeReport(EncodeReport(SomeAnswer()) + "x"), std::runtime_error);
}

TEST(WorkerMessages, ALengthBeyondTheMessageIsRefused)
{
    std::string message = EncodeReport(WorkerTrace{1, "c", "t"});
    message[5] = '\xFF';
    message[8] = '\xFF';
    EXPECT_THROW(DecodeReport(message), std::runtime_error);
}

TEST(WorkerMessages, AFlagOrPhaseThatDoesNotExistIsRefusedByName)
{
    const auto refusal = [](std::string message, std::size_t place) -> std::string {
        message[place] = '\x7F';
        try {
            DecodeReport(message);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "accepted";
    };
    const std::string message = EncodeReport(SomeAnswer());
    EXPECT_EQ(refusal(message, 0), "wrong value: kind");
    EXPECT_EQ(refusal(message, 5), "wrong value: misbehaved");
    EXPECT_EQ(refusal(message, 6), "wrong value: could not load");
    EXPECT_EQ(refusal(message, 7), "wrong value: kind of failure");
    EXPECT_EQ(refusal(message, 8), "wrong value: phase");
}

TEST(WorkerMessages, WhatGoesToAWorkerIsNoReportAndTheOtherWayRound)
{
    EXPECT_THROW(DecodeReport(EncodeCommand(EntityRequest{1, oddLocator})), std::runtime_error);
    EXPECT_THROW(DecodeCommand(EncodeReport(SomeAnswer())), std::runtime_error);
}

TEST(WorkerMessages, ANumberThatIsNoPhaseIsNone)
{
    EXPECT_EQ(PhaseFromNumber(static_cast<std::uint32_t>(ScanPhase::Unload)), ScanPhase::Unload);
    EXPECT_EQ(PhaseFromNumber(static_cast<std::uint32_t>(ScanPhase::Unload) + 1), ScanPhase::Unknown);
    EXPECT_EQ(PhaseFromNumber(0xFFFFFFFF), ScanPhase::Unknown);
}

} // namespace
} // namespace zetaudiofilterscan
