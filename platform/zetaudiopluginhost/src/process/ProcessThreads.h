#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace zetaudiopluginhost {

/// The threads of this process by the system's numbers, in ascending order.
std::vector<std::uint64_t> ProcessThreads();

/// True when threads run that are not in `before`. A thread that is just ending is waited for, a little: it
/// is looked for twice at least, also where the system lets this thread wait for long.
bool HasNewThreads(const std::vector<std::uint64_t>& before,
                   const std::function<std::vector<std::uint64_t>()>& list = ProcessThreads);

} // namespace zetaudiopluginhost
