#include "WorkerMessages.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace zetaudiofilterscan {
namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::ScanPhase;

const PluginLocator oddLocator(TechnologyType::VST, L"/odd|name\n\xDC80%.so", L"part 1");

EntityAnswer SomeAnswer()
{
    return {7, true, true, ScanPhase::Unload, "it said \"no\"\n", std::string("<text>\0</text>", 14)};
}

TEST(WorkerMessages, settings_come_back_as_they_were)
{
    WorkerSettings settings;
    settings.preferencesFolder = L"/home/someone/\xDCFF";
    settings.traceVolume = -3;
    settings.options = {true, false};
    settings.refuseNetwork = false;
    settings.hideDisplay = true;

    const auto decoded = std::get<WorkerSettings>(DecodeCommand(EncodeCommand(settings)));
    EXPECT_EQ(decoded.preferencesFolder, settings.preferencesFolder);
    EXPECT_EQ(decoded.traceVolume, settings.traceVolume);
    EXPECT_TRUE(decoded.options.disableShellSkipping);
    EXPECT_FALSE(decoded.options.quickEffectScan);
    EXPECT_FALSE(decoded.refuseNetwork);
    EXPECT_TRUE(decoded.hideDisplay);
}

TEST(WorkerMessages, a_request_comes_back_as_it_was)
{
    const auto decoded = std::get<EntityRequest>(DecodeCommand(EncodeCommand(EntityRequest{42, oddLocator})));
    EXPECT_EQ(decoded.number, 42U);
    EXPECT_EQ(decoded.locator, oddLocator);
}

TEST(WorkerMessages, a_locator_comes_back_with_every_unit)
{
    for (const wchar_t* path :
         {L"/gr\u00FC\u00DF", L"/\xDCC3\xDCBC", L"/\xD83C", L"/a|b%7C\n", L"/\uFFFF\xDC80\U0001F39B"}) {
        const PluginLocator locator(TechnologyType::VST3, path, std::wstring(path) + L" part");
        EXPECT_EQ(std::get<EntityRequest>(DecodeCommand(EncodeCommand(EntityRequest{1, locator}))).locator,
                  locator);
    }
}

TEST(WorkerMessages, a_locator_without_path_or_technology_is_refused)
{
    for (const PluginLocator& locator : {PluginLocator(), PluginLocator(TechnologyType::VST, L""),
                                         PluginLocator(TechnologyType::None, L"/a")})
        EXPECT_THROW(DecodeCommand(EncodeCommand(EntityRequest{1, locator})), std::runtime_error);
}

TEST(WorkerMessages, the_known_modules_are_asked_for_and_come_back_as_they_were)
{
    EXPECT_TRUE(
        std::holds_alternative<KnownModulesQuestion>(DecodeReport(EncodeReport(KnownModulesQuestion()))));
    const KnownModules known{{oddLocator, PluginLocator(TechnologyType::VST3, L"/b.vst3")}};
    EXPECT_EQ(std::get<KnownModules>(DecodeCommand(EncodeCommand(known))).locators, known.locators);
}

TEST(WorkerMessages, an_answer_comes_back_as_it_was)
{
    const auto decoded = std::get<EntityAnswer>(DecodeReport(EncodeReport(SomeAnswer())));
    EXPECT_EQ(decoded.number, 7U);
    EXPECT_TRUE(decoded.misbehaved);
    EXPECT_TRUE(decoded.couldNotLoad);
    EXPECT_EQ(decoded.phase, ScanPhase::Unload);
    EXPECT_EQ(decoded.reason, SomeAnswer().reason);
    EXPECT_EQ(decoded.configuration, SomeAnswer().configuration);
}

TEST(WorkerMessages, a_trace_line_comes_back_as_it_was)
{
    const auto decoded =
        std::get<WorkerTrace>(DecodeReport(EncodeReport(WorkerTrace{6, "Category", "text\r\n"})));
    EXPECT_EQ(decoded.level, 6);
    EXPECT_EQ(decoded.category, "Category");
    EXPECT_EQ(decoded.text, "text\r\n");
}

TEST(WorkerMessages, a_message_cut_off_anywhere_is_refused)
{
    const std::string whole = EncodeReport(SomeAnswer());
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_THROW(DecodeReport(whole.substr(0, length)), std::runtime_error) << length;
}

TEST(WorkerMessages, bytes_left_over_are_refused)
{
    EXPECT_THROW(DecodeReport(EncodeReport(SomeAnswer()) + "x"), std::runtime_error);
}

TEST(WorkerMessages, a_length_beyond_the_message_is_refused)
{
    std::string message = EncodeReport(WorkerTrace{1, "c", "t"});
    message[5] = '\xFF';
    message[8] = '\xFF';
    EXPECT_THROW(DecodeReport(message), std::runtime_error);
}

TEST(WorkerMessages, a_flag_or_phase_that_does_not_exist_is_refused_by_name)
{
    const auto refusal = [](std::string message, std::size_t place) -> std::string {
        message[place] = '\x09';
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
    EXPECT_EQ(refusal(message, 7), "wrong value: phase");
}

TEST(WorkerMessages, what_goes_to_a_worker_is_no_report_and_the_other_way_round)
{
    EXPECT_THROW(DecodeReport(EncodeCommand(EntityRequest{1, oddLocator})), std::runtime_error);
    EXPECT_THROW(DecodeCommand(EncodeReport(SomeAnswer())), std::runtime_error);
}

TEST(WorkerMessages, a_number_that_is_no_phase_is_none)
{
    EXPECT_EQ(PhaseFromNumber(static_cast<std::uint32_t>(ScanPhase::Unload)), ScanPhase::Unload);
    EXPECT_EQ(PhaseFromNumber(static_cast<std::uint32_t>(ScanPhase::Unload) + 1), ScanPhase::None);
    EXPECT_EQ(PhaseFromNumber(0xFFFFFFFF), ScanPhase::None);
}

} // namespace
} // namespace zetaudiofilterscan
