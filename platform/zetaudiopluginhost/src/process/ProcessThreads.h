#pragma once

#include <cstdint>
#include <vector>

namespace zetaudiopluginhost {

/// The threads of this process by the system's numbers, in ascending order.
std::vector<std::uint64_t> ProcessThreads();

/// True when threads run that are not in `before`. A thread that is just ending is waited for, a little.
bool HasNewThreads(const std::vector<std::uint64_t>& before);

} // namespace zetaudiopluginhost
