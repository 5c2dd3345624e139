#pragma once

#include <cstdint>

namespace zetaudiofilterscan {

/// Makes the calling process fit for loading plug-ins: it ends with its parent (at once, if that is gone
/// already), cannot gain privileges, leaves no core dump, shows no crash dialog, and its output comes line by
/// line.
void SetUpWorkerProcess(std::uint64_t parentProcess);

/// Ends the process without running what plug-ins have left to run.
[[noreturn]] void EndWorkerProcess(int exitCode);

} // namespace zetaudiofilterscan
