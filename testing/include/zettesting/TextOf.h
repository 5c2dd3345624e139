#pragma once

#include <optional>
#include <string>

#include <zetcore/utility/Reason.h>

namespace zettesting {

/// The reason's text, for comparing; empty where there is no reason.
inline std::string TextOf(const std::optional<zetcore::utility::Reason>& reason)
{
    return reason ? reason->text : std::string();
}

} // namespace zettesting
