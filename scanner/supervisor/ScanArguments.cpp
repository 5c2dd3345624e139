#include "ScanArguments.h"

#include <any>

#include <zetcore/string/OutputTail.h>
#include <zetcore/string/Utf.h>
#include <zetmarshal/RPCServer.h>

namespace zetaudiofilterscan {

using zetaudiofilterhost::PluginLocator;
using zetcore::serialization::Array;
using zetcore::serialization::Utf8String;
using zetcore::serialization::ValuePtr;
using zetmarshal::RPCError;
using zetmarshal::RPCErrorCode;

namespace {

[[noreturn]] void Throw(const std::string& message)
{
    throw RPCError(RPCErrorCode::InvalidParams, message);
}

void CheckCount(const char* method, const Array& params, std::size_t expected)
{
    if (params.size() != expected)
        Throw(std::string(method) + " takes " + std::to_string(expected) +
              (expected == 1 ? " argument, not " : " arguments, not ") + std::to_string(params.size()));
}

// `number` counts from 1.
template<typename T>
const T& Get(const char* method, const Array& params, std::size_t number, const char* expected)
{
    const ValuePtr& value = params[number - 1];
    const T* held = value ? std::any_cast<T>(value.get()) : nullptr;
    if (!held)
        Throw(std::string(method) + ": argument " + std::to_string(number) + " must be " + expected);
    return *held;
}

std::wstring GetPath(const Array& params, std::size_t number, const char* what)
{
    const std::string expected = std::string("a string (") + what + ")";
    const auto& text = Get<Utf8String>("Connect", params, number, expected.c_str());
    if (text.empty())
        Throw("Connect: argument " + std::to_string(number) + " (" + what + ") must not be empty");
    std::wstring path = zetcore::string::UTF8to16(zetcore::serialization::ToStdString(text));
    if (path.find(L'\0') != std::wstring::npos)
        Throw("Connect: argument " + std::to_string(number) + " (" + what +
              ") must not contain a null character");
    return path;
}

} // namespace

ConnectArguments ReadConnectArguments(const Array& params)
{
    CheckCount("Connect", params, 6);
    ConnectArguments arguments;
    arguments.pluginSettingsPath = GetPath(params, 1, "plug-in settings file path");
    arguments.bannedSettingsPath = GetPath(params, 2, "banned plug-in settings file path");
    arguments.permanentBannedSettingsPath = GetPath(params, 3, "permanent banned settings file path");
    arguments.resultPath = GetPath(params, 4, "scan result file path");
    arguments.disableVST2ShellSkipping =
        Get<bool>("Connect", params, 5, "a boolean (disable VST2 shell skipping)");
    arguments.quickEffectScan = Get<bool>("Connect", params, 6, "a boolean (quick effect scan)");
    return arguments;
}

std::vector<PluginLocator> ReadLocators(const Array& params)
{
    constexpr char method[] = "BeginScanForPlugins";
    constexpr char expected[] = "an array of strings (plug-in locators)";
    CheckCount(method, params, 1);
    const auto& elements = Get<Array>(method, params, 1, expected);
    std::vector<PluginLocator> locators;
    locators.reserve(elements.size());
    for (const ValuePtr& element : elements) {
        const auto* text = element ? std::any_cast<Utf8String>(element.get()) : nullptr;
        const std::string number = std::to_string(locators.size() + 1);
        if (!text)
            Throw(std::string(method) + ": argument 1 must be " + expected + ", but its element " + number +
                  " is no string");
        const std::string utf8 = zetcore::serialization::ToStdString(*text);
        PluginLocator locator = PluginLocator::FromString(zetcore::string::UTF8to16(utf8));
        if (locator.IsEmpty())
            Throw(std::string(method) + ": argument 1: element " + number +
                  " is no plug-in locator: " + zetcore::string::TidyLine(utf8, 200));
        locators.push_back(std::move(locator));
    }
    return locators;
}

void ReadNoArguments(const char* method, const Array& params)
{
    CheckCount(method, params, 0);
}

} // namespace zetaudiofilterscan
