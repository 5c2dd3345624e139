#pragma once

namespace zettransport {

/// The category of this library's lines in the trace.
inline constexpr char traceCategory[] = "zettransport";

} // namespace zettransport
