#pragma once

#include <zetcore/filesupport/handles/Descriptor.h>

namespace zetaudiofilterscan {

// The descriptors of a worker, after 0, 1 and 2.
inline constexpr int workerChannel = 3;
inline constexpr int workerPage = 4;

/// Moves the descriptor above those of a worker, so that arranging a worker's never overwrites one of ours.
/// Takes it over. Throws `std::system_error`.
zetcore::filesupport::Descriptor MoveUp(int descriptor);

} // namespace zetaudiofilterscan
