#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zetcore::debug {

enum class FaultAction
{
    Stop,
    Kill,
    NoSpace,
    ReadOnly,
    Denied,
    Late,
};

/// One element of `ZET_FAULT`.
struct FaultSetting
{
    /// The name, or the beginning of one, without the `*`.
    std::string place;
    bool isBeginning = false;
    unsigned visit = 1;
    FaultAction action = FaultAction::Stop;
    /// Only `Late` uses them.
    unsigned seconds = 0;

    bool Matches(std::string_view name) const;
    friend bool operator==(const FaultSetting&, const FaultSetting&) = default;
};

/// Empty when the text is malformed.
std::optional<FaultSetting> ParseFaultSetting(std::string_view text);

} // namespace zetcore::debug
