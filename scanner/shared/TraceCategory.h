#pragma once

namespace zetaudiofilterscan {

/// The category of the supervisor's and the workers' lines in the trace.
inline constexpr char traceCategory[] = "zetaudiofilterscan";

} // namespace zetaudiofilterscan
