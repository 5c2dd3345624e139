#pragma once

#include <cstdint>
#include <string>

namespace zetscanprotocol {

/// The scanners of one scan hand to each other what they know, in files of the user's runtime folder. Their
/// names all begin with this.
inline constexpr char relayPrefix[] = "zetaudiofilterscan-culprits-";

/// Files for the scanners of this process begin with this.
std::string RelayNamesOf(std::uint64_t hostProcess);

/// Deletes them. A host that has ended its scanner calls this: the scan is over, and the next one must not
/// take that scanner for one that a plug-in has killed. A failure is traced. Any thread.
void DeleteRelayOf(std::uint64_t hostProcess);

} // namespace zetscanprotocol
