#include <zetscanprotocol/ScanRequests.h>

#include <any>
#include <string_view>

#include <zetcore/string/OutputTail.h>
#include <zetcore/string/Utf.h>
#include <zetmarshal/RPCServer.h>
#include <zetscanprotocol/ScanProtocol.h>

#include "WireValues.h"

namespace zetscanprotocol {

namespace serialization = zetcore::serialization;
using serialization::Array;
using serialization::Utf8String;
using serialization::ValuePtr;
using zetaudiofilterhost::PluginLocator;
using zetmarshal::RPCError;
using zetmarshal::RPCErrorCode;

namespace {

/// Connect's arguments in their order on the wire. Writing and reading both go through it.
template<typename Arguments, typename Visit>
void VisitArguments(Arguments& arguments, Visit&& visit)
{
    visit(arguments.pluginSettingsPath, "plug-in settings file path");
    visit(arguments.bannedSettingsPath, "banned plug-in settings file path");
    visit(arguments.permanentBannedSettingsPath, "permanent banned settings file path");
    visit(arguments.resultFilePath, "scan result file path");
    visit(arguments.disableVST2ShellSkipping, "disable VST2 shell skipping");
    visit(arguments.quickEffectScan, "quick effect scan");
}

serialization::Call CallWithoutArguments(const char* method)
{
    return serialization::BuildCall(method, serialization::MakeValue(Array()));
}

/// The positional arguments of one request, taken from the first to the last.
class ArgumentReader
{
  public:
    ArgumentReader(std::string_view fullMethod, const Array& given, std::size_t expected)
        : method(fullMethod.substr(fullMethod.rfind('.') + 1)), params(given)
    {
        if (params.size() != expected)
            Throw(method + " takes " + std::to_string(expected) +
                  (expected == 1 ? " argument, not " : " arguments, not ") + std::to_string(params.size()));
    }

    template<typename T>
    const T& Take(const std::string& expected)
    {
        const ValuePtr& value = params[taken++];
        const T* held = value ? std::any_cast<T>(value.get()) : nullptr;
        if (!held)
            Throw(Argument() + " must be " + expected);
        return *held;
    }

    void operator()(std::wstring& path, const std::string& meaning)
    {
        const auto& text = Take<Utf8String>("a string (" + meaning + ")");
        if (text.empty())
            Throw(Argument() + " (" + meaning + ") must not be empty");
        path = zetcore::string::UTF8to16(serialization::ToStdString(text));
        if (path.find(L'\0') != std::wstring::npos)
            Throw(Argument() + " (" + meaning + ") must not contain a null character");
    }
    void operator()(bool& flag, const std::string& meaning)
    {
        flag = Take<bool>("a boolean (" + meaning + ")");
    }

    /// The argument that was taken last, for messages.
    std::string Argument() const { return method + ": argument " + std::to_string(taken); }

    [[noreturn]] static void Throw(const std::string& message)
    {
        throw RPCError(RPCErrorCode::InvalidParams, message);
    }

  private:
    std::string method;
    const Array& params;
    std::size_t taken = 0;
};

} // namespace

serialization::Call BuildConnect(const ConnectArguments& arguments)
{
    const ValuePtr array = serialization::MakeValue(Array());
    VisitArguments(arguments, [&array](const auto& argument, const char*) {
        serialization::AppendToArray(array, ToValue(argument));
    });
    return serialization::BuildCall(connectMethod, array);
}

ConnectArguments ReadConnect(const Array& params)
{
    ConnectArguments arguments;
    std::size_t count = 0;
    VisitArguments(arguments, [&count](auto&, const char*) { ++count; });
    VisitArguments(arguments, ArgumentReader(connectMethod, params, count));
    return arguments;
}

serialization::Call BuildBeginScanForPlugins(const std::vector<PluginLocator>& locators)
{
    Array texts;
    texts.reserve(locators.size());
    for (const PluginLocator& locator : locators)
        texts.push_back(serialization::MakeString(locator.ToString()));
    return serialization::BuildCall(
        beginScanMethod, serialization::MakeValue(Array{serialization::MakeValue(std::move(texts))}));
}

std::vector<PluginLocator> ReadBeginScanForPlugins(const Array& params)
{
    constexpr char expected[] = "an array of strings (plug-in locators)";
    ArgumentReader reader(beginScanMethod, params, 1);
    const auto& elements = reader.Take<Array>(expected);
    std::vector<PluginLocator> locators;
    locators.reserve(elements.size());
    for (const ValuePtr& element : elements) {
        const auto* text = element ? std::any_cast<Utf8String>(element.get()) : nullptr;
        const std::string number = std::to_string(locators.size() + 1);
        if (!text)
            ArgumentReader::Throw(reader.Argument() + " must be " + expected + ", but its element " + number +
                                  " is no string");
        const std::string utf8 = serialization::ToStdString(*text);
        PluginLocator locator = PluginLocator::FromString(zetcore::string::UTF8to16(utf8));
        if (locator.IsEmpty())
            ArgumentReader::Throw(reader.Argument() + ": element " + number +
                                  " is no plug-in locator: " + zetcore::string::TidyLine(utf8, 200));
        locators.push_back(std::move(locator));
    }
    return locators;
}

serialization::Call BuildGetScanInfo()
{
    return CallWithoutArguments(getScanInfoMethod);
}

void ReadGetScanInfo(const Array& params)
{
    ArgumentReader(getScanInfoMethod, params, 0);
}

serialization::Call BuildScanOneEntity()
{
    return CallWithoutArguments(scanOneEntityMethod);
}

void ReadScanOneEntity(const Array& params)
{
    ArgumentReader(scanOneEntityMethod, params, 0);
}

} // namespace zetscanprotocol
