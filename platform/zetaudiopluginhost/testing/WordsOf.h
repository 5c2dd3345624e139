#pragma once

#include <optional>
#include <string>

#include <zetaudiopluginhost/PluginFailure.h>

namespace zetaudiopluginhost {

/// The failure in English, for comparing; empty where there is none.
inline std::string WordsOf(const std::optional<PluginFailure>& failure)
{
    return failure ? WordFailures({*failure}) : std::string();
}

} // namespace zetaudiopluginhost
