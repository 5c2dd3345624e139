#pragma once

namespace zetaudiofilterscan {

/// The category of the supervisor's lines in the trace.
inline constexpr char traceCategory[] = "zetaudiofilterscan";

} // namespace zetaudiofilterscan
