#include <zetscanprotocol/ScanRequests.h>

#include <any>
#include <functional>

#include <gtest/gtest.h>
#include <zetmarshal/JsonValue.h>
#include <zetmarshal/RPCServer.h>

namespace zetscanprotocol {
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
    return ErrorOf([&] { ReadConnect(params); });
}

std::string Json(const Call& call)
{
    return call.method + " " + zetmarshal::ToJson(call.arguments);
}

TEST(ScanRequests, ConnectCarriesFourPathsAndTwoFlagsInThatOrder)
{
    EXPECT_EQ(Json(BuildConnect({L"/p/\u00FC", L"/b", L"/n", L"/p.scan", true, false})),
              "com.quorvex.zetaudiofilterscan.Connect "
              "[\"/p/\xc3\xbc\",\"/b\",\"/n\",\"/p.scan\",true,false]");
    EXPECT_EQ(Json(BuildConnect({L"", L"", L"", L"", false, true})),
              "com.quorvex.zetaudiofilterscan.Connect [\"\",\"\",\"\",\"\",false,true]");
}

TEST(ScanRequests, BeginScanCarriesOneArrayOfLocatorsInTheirOrder)
{
    const std::vector<PluginLocator> locators{PluginLocator(TechnologyType::VST3, L"/z.vst3"),
                                              PluginLocator(TechnologyType::VST, L"/a.so", L"sub")};
    EXPECT_EQ(Json(BuildBeginScanForPlugins(locators)),
              "com.quorvex.zetaudiofilterscan.BeginScanForPlugins [[\"VST3|/z.vst3|\",\"VST|/a.so|sub\"]]");
    EXPECT_EQ(Json(BuildBeginScanForPlugins({})), "com.quorvex.zetaudiofilterscan.BeginScanForPlugins [[]]");
}

TEST(ScanRequests, EveryTextOfARequestIsAUtf8StringAndEveryFlagABoolean)
{
    const Call connect = BuildConnect({L"/p/\u00FC", L"/b", L"/n", L"/p.scan", true, false});
    const auto arguments = std::any_cast<Array>(*connect.arguments);
    ASSERT_EQ(arguments.size(), 6u);
    for (std::size_t path = 0; path < 4; ++path)
        EXPECT_TRUE(arguments[path]->type() == typeid(Utf8String)) << path;
    for (std::size_t flag = 4; flag < 6; ++flag)
        EXPECT_TRUE(arguments[flag]->type() == typeid(bool)) << flag;

    const Call begin =
        BuildBeginScanForPlugins({PluginLocator(TechnologyType::VST, L"/v/\u00FC.so", L"sub \u00E9")});
    const auto lists = std::any_cast<Array>(*begin.arguments);
    ASSERT_EQ(lists.size(), 1u);
    const auto locators = std::any_cast<Array>(*lists.front());
    ASSERT_EQ(locators.size(), 1u);
    EXPECT_EQ(std::any_cast<Utf8String>(*locators.front()), ToUtf8String("VST|/v/\xc3\xbc.so|sub \xc3\xa9"));
}

TEST(ScanRequests, TheOtherRequestsCarryAnEmptyArray)
{
    EXPECT_EQ(Json(BuildGetScanInfo()), "com.quorvex.zetaudiofilterscan.GetScanInfo []");
    EXPECT_EQ(Json(BuildScanOneEntity()), "com.quorvex.zetaudiofilterscan.ScanOneEntity []");
}

TEST(ScanRequests, TakesWhatAHostSendsWithConnect)
{
    const ConnectArguments arguments = ReadConnect(GoodConnect());
    EXPECT_EQ(arguments.pluginSettingsPath, L"/p/plugins.xml");
    EXPECT_EQ(arguments.bannedSettingsPath, L"/p/banned.xml");
    EXPECT_EQ(arguments.permanentBannedSettingsPath, L"/p/permanent.xml");
    EXPECT_EQ(arguments.resultFilePath, L"/p/plugins.xml.scan");
    EXPECT_TRUE(arguments.disableVST2ShellSkipping);
    EXPECT_FALSE(arguments.quickEffectScan);
}

TEST(ScanRequests, NamesTheArgumentOfConnectThatIsWrong)
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

TEST(ScanRequests, CountsTheArguments)
{
    EXPECT_EQ(ErrorOf([] { ReadConnect({}); }), "Connect takes 6 arguments, not 0");
    Array seven = GoodConnect();
    seven.push_back(MakeValue(true));
    EXPECT_EQ(ErrorOf([&] { ReadConnect(seven); }), "Connect takes 6 arguments, not 7");
    EXPECT_EQ(ErrorOf([] { ReadBeginScanForPlugins({}); }), "BeginScanForPlugins takes 1 argument, not 0");
    EXPECT_EQ(ErrorOf([] { ReadGetScanInfo({MakeValue(1LL)}); }), "GetScanInfo takes 0 arguments, not 1");
    EXPECT_EQ(ErrorOf([] { ReadGetScanInfo({}); }), "no error");
    EXPECT_EQ(ErrorOf([] {
                  ReadScanOneEntity({MakeValue(1LL), MakeValue(1LL)});
              }),
              "ScanOneEntity takes 0 arguments, not 2");
    EXPECT_EQ(ErrorOf([] { ReadScanOneEntity({}); }), "no error");
}

TEST(ScanRequests, TakesAListOfLocatorsAndAnEmptyOne)
{
    const PluginLocator first(TechnologyType::VST, L"/a|b.so", L"sub");
    const PluginLocator second(TechnologyType::VST3, L"/c.vst3");
    const Array list{MakeString(first.ToString()), MakeString(second.ToString())};
    EXPECT_EQ(ReadBeginScanForPlugins({MakeValue(list)}), (std::vector{first, second}));
    EXPECT_TRUE(ReadBeginScanForPlugins({MakeValue(Array())}).empty());
}

TEST(ScanRequests, NamesTheElementThatIsNoLocator)
{
    const ValuePtr good = MakeString(PluginLocator(TechnologyType::VST, L"/a.so").ToString());
    const auto error = [](Array list) {
        return ErrorOf([&] { ReadBeginScanForPlugins({MakeValue(std::move(list))}); });
    };
    EXPECT_EQ(error({good, MakeString("xyz")}),
              "BeginScanForPlugins: argument 1: element 2 is no plug-in locator: xyz");
    EXPECT_EQ(error({MakeString("")}), "BeginScanForPlugins: argument 1: element 1 is no plug-in locator: ");
    EXPECT_EQ(error({good, good, MakeValue(3LL)}),
              "BeginScanForPlugins: argument 1 must be an array of strings "
              "(plug-in locators), but its element 3 is no string");
    EXPECT_EQ(ErrorOf([] { ReadBeginScanForPlugins({MakeString("VST|/a.so|")}); }),
              "BeginScanForPlugins: argument 1 must be an array of strings (plug-in locators)");
}

} // namespace
} // namespace zetscanprotocol
