#pragma once

#include <cstdint>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/serialization/Value.h>

/// The values as which a message's fields travel.
namespace zetscanprotocol {

inline zetcore::serialization::ValuePtr ToValue(const std::wstring& text)
{
    return zetcore::serialization::MakeString(text);
}

inline zetcore::serialization::ValuePtr ToValue(const zetaudiofilterhost::PluginLocator& locator)
{
    return zetcore::serialization::MakeString(locator.ToString());
}

inline zetcore::serialization::ValuePtr ToValue(std::int32_t number)
{
    return zetcore::serialization::MakeValue<long long>(number);
}

inline zetcore::serialization::ValuePtr ToValue(bool flag)
{
    return zetcore::serialization::MakeValue(flag);
}

} // namespace zetscanprotocol
