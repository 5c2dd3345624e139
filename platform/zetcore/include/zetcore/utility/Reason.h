#pragma once

#include <string>

namespace zetcore::utility {

/// Why something is not so, for people (UTF-8). Where a refusal is an answer and no failure, the operation
/// gives `std::optional<Reason>`: a reason, or nothing that speaks against it.
struct Reason
{
    std::string text;
};

} // namespace zetcore::utility
