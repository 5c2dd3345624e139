#include "vst3/Vst3Host.h"

#include <algorithm>
#include <string>

#include <zetcore/string/Utf.h>
#include <zetcore/string/UtfUnits.h>
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
    const std::u16string client =
        zetcore::string::ToUTF16Units(zetcore::string::ForDisplay(zetcore::utility::GetClientName()));
    const std::u16string_view shown = zetcore::string::CutUTF16(client, nameCapacity - 1);
    *std::copy(shown.begin(), shown.end(), name) = 0;
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
