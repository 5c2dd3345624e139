#pragma once

#include <utility>
#include <vector>

#include <sys/types.h>

#include <zetcore/filesupport/handles/Descriptor.h>

#include "WorkerDescriptors_posix.h"

namespace zetaudiofilterscan {

using zetcore::filesupport::Descriptor;

/// Two connected sockets of this type (`SOCK_STREAM`, `SOCK_SEQPACKET`). Throws `std::system_error`.
std::pair<Descriptor, Descriptor> MakeChannel(int type);

/// Starts this program as a worker, or as one that makes copies of itself, in a session of its own, with
/// default signals, no standard input, and these as its descriptors from 1 on; -1 stands for the null device.
/// Throws `std::system_error`.
pid_t StartWorkerProgram(const std::vector<int>& descriptors, bool makesCopies);

} // namespace zetaudiofilterscan
