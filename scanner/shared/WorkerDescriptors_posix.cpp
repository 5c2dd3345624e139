#include "WorkerDescriptors_posix.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>

namespace zetaudiofilterscan {

using zetcore::filesupport::Descriptor;

namespace {

constexpr int lowestOwn = 10;

} // namespace

Descriptor MoveUp(int descriptor)
{
    Descriptor low(descriptor);
    if (descriptor >= lowestOwn)
        return low;
    Descriptor high(::fcntl(descriptor, F_DUPFD_CLOEXEC, lowestOwn));
    if (!high.IsOpen())
        throw std::system_error(errno, std::generic_category(), "fcntl");
    return high;
}

} // namespace zetaudiofilterscan
