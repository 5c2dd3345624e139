#pragma once

namespace zetmarshal {

/// The category of this library's lines in the trace.
inline constexpr char traceCategory[] = "zetmarshal";

} // namespace zetmarshal
