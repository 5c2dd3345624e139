#pragma once

#include <cstdint>
#include <optional>

namespace zetaudiofilterscan {

/// Tells a process from those that had its number before and will have it later.
struct ProcessIdentity
{
    std::uint64_t number = 0;
    /// In a unit of the system's.
    std::uint64_t start = 0;

    friend bool operator==(const ProcessIdentity&, const ProcessIdentity&) = default;
};

/// The process that has this number now. Empty when none runs, and when the system does not tell.
std::optional<ProcessIdentity> IdentifyProcess(std::uint64_t number);

/// The process that has started this one; `number` is what `HostProcessNumber` told. Empty when it has ended,
/// and when the system does not tell.
std::optional<ProcessIdentity> IdentifyHost(std::uint64_t number);

} // namespace zetaudiofilterscan
