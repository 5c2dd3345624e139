#include "ScanArguments.h"

#include <functional>

#include <gtest/gtest.h>
#include <zetmarshal/RPCServer.h>

namespace zetaudiofilterscan {
namespace {

using namespace zetcore::serialization;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
using zetmarshal::RPCError;
using zetmarshal::RPCErrorCode;

Array GoodConnect()
{
    return {MakeString("/p/plugins.xml"),
            MakeString("/p/banned.xml"),
            MakeString("/p/permanent.xml"),
            MakeString("/p/plugins.xml.scan"),
            MakeValue(true),
            MakeValue(false)};
}

std::string ErrorOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const RPCError& error) {
        EXPECT_EQ(error.Code(), RPCErrorCode::InvalidParams);
        return error.what();
    }
    return "no error";
}

std::string ConnectErrorWith(std::size_t place, ValuePtr value)
{
    Array params = GoodConnect();
    params[place] = std::move(value);
    return ErrorOf([&] { ReadConnectArguments(params); });
}

TEST(ScanArguments, takes_what_a_host_sends_with_connect)
{
    const ConnectArguments arguments = ReadConnectArguments(GoodConnect());
    EXPECT_EQ(arguments.pluginSettingsPath, L"/p/plugins.xml");
    EXPECT_EQ(arguments.bannedSettingsPath, L"/p/banned.xml");
    EXPECT_EQ(arguments.permanentBannedSettingsPath, L"/p/permanent.xml");
    EXPECT_EQ(arguments.resultPath, L"/p/plugins.xml.scan");
    EXPECT_TRUE(arguments.disableVST2ShellSkipping);
    EXPECT_FALSE(arguments.quickEffectScan);
}

TEST(ScanArguments, names_the_argument_of_connect_that_is_wrong)
{
    EXPECT_EQ(ConnectErrorWith(0, MakeValue(5LL)),
              "Connect: argument 1 must be a string (plug-in settings file path)");
    EXPECT_EQ(ConnectErrorWith(3, MakeValue(true)),
              "Connect: argument 4 must be a string (scan result file path)");
    EXPECT_EQ(ConnectErrorWith(4, MakeString("true")),
              "Connect: argument 5 must be a boolean (disable VST2 shell skipping)");
    EXPECT_EQ(ConnectErrorWith(5, MakeValue(1LL)),
              "Connect: argument 6 must be a boolean (quick effect scan)");
    EXPECT_EQ(ConnectErrorWith(2, nullptr),
              "Connect: argument 3 must be a string (permanent banned settings file path)");
    EXPECT_EQ(ConnectErrorWith(1, MakeString("")),
              "Connect: argument 2 (banned plug-in settings file path) must not be empty");
    EXPECT_EQ(ConnectErrorWith(1, MakeString(std::string_view("/a\0b", 4))),
              "Connect: argument 2 (banned plug-in settings file path) must not contain a null character");
}

TEST(ScanArguments, counts_the_arguments)
{
    EXPECT_EQ(ErrorOf([] { ReadConnectArguments({}); }), "Connect takes 6 arguments, not 0");
    Array seven = GoodConnect();
    seven.push_back(MakeValue(true));
    EXPECT_EQ(ErrorOf([&] { ReadConnectArguments(seven); }), "Connect takes 6 arguments, not 7");
    EXPECT_EQ(ErrorOf([] { ReadLocators({}); }), "BeginScanForPlugins takes 1 argument, not 0");
    EXPECT_EQ(ErrorOf([] { ReadNoArguments("GetScanInfo", {MakeValue(1LL)}); }),
              "GetScanInfo takes 0 arguments, not 1");
    EXPECT_EQ(ErrorOf([] { ReadNoArguments("GetScanInfo", {}); }), "no error");
}

TEST(ScanArguments, takes_a_list_of_locators_and_an_empty_one)
{
    const PluginLocator first(TechnologyType::VST, L"/a|b.so", L"sub");
    const PluginLocator second(TechnologyType::VST3, L"/c.vst3");
    const Array list{MakeString(first.ToString()), MakeString(second.ToString())};
    EXPECT_EQ(ReadLocators({MakeValue(list)}), (std::vector{first, second}));
    EXPECT_TRUE(ReadLocators({MakeValue(Array())}).empty());
}

TEST(ScanArguments, names_the_element_that_is_no_locator)
{
    const ValuePtr good = MakeString(PluginLocator(TechnologyType::VST, L"/a.so").ToString());
    const auto error = [](Array list) {
        return ErrorOf([&] { ReadLocators({MakeValue(std::move(list))}); });
    };
    EXPECT_EQ(error({good, MakeString("xyz")}),
              "BeginScanForPlugins: argument 1: element 2 is no plug-in locator: xyz");
    EXPECT_EQ(error({MakeString("")}), "BeginScanForPlugins: argument 1: element 1 is no plug-in locator: ");
    EXPECT_EQ(error({good, good, MakeValue(3LL)}),
              "BeginScanForPlugins: argument 1 must be an array of strings "
              "(plug-in locators), but its element 3 is no string");
    EXPECT_EQ(ErrorOf([] { ReadLocators({MakeString("VST|/a.so|")}); }),
              "BeginScanForPlugins: argument 1 must be an array of strings (plug-in locators)");
}

} // namespace
} // namespace zetaudiofilterscan
