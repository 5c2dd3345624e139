#include "vst3/Vst3Host.h"

#include <zetcore/string/Utf.h>
#include <zetcore/utility/ClientName.h>

namespace zetaudiopluginhost::vst3 {

namespace {

constexpr std::size_t nameCapacity = 128;

} // namespace

Vst3Host& Vst3Host::Instance()
{
    static Vst3Host host;
    return host;
}

Result Vst3Host::QueryInterface(const char* wanted, void** object)
{
    if (object == nullptr || wanted == nullptr)
        return invalidArgument;
    const bool isKnown = FUnknown::iid.Is(wanted) || IHostApplication::iid.Is(wanted);
    *object = isKnown ? static_cast<IHostApplication*>(this) : nullptr;
    return isKnown ? resultOk : noInterface;
}

Result Vst3Host::GetName(char16_t* name)
{
    if (name == nullptr)
        return invalidArgument;
    const std::wstring client = zetcore::string::ForDisplay(zetcore::utility::GetClientName());
    std::size_t length = 0;
    for (std::size_t i = 0; i < client.size();) {
        const char32_t point = zetcore::string::NextCodePoint(client, i);
        const std::size_t units = point > 0xFFFF ? 2 : 1;
        if (length + units >= nameCapacity)
            break;
        if (units == 2) {
            name[length++] = static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
            name[length++] = static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
        } else {
            name[length++] = static_cast<char16_t>(point);
        }
    }
    name[length] = 0;
    return resultOk;
}

Result Vst3Host::CreateInstance(const char*, const char*, void** object)
{
    // Messages between a component and its controller: a scan makes no controllers.
    if (object != nullptr)
        *object = nullptr;
    return resultFalse;
}

} // namespace zetaudiopluginhost::vst3
