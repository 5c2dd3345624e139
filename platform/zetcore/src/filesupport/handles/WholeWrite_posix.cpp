#include "filesupport/handles/WholeWrite_posix.h"

#include <cerrno>

#include <unistd.h>

#include "filesupport/handles/SystemError.h"

namespace zetcore::filesupport {

std::error_code WriteWhole(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return LastSystemError();
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

} // namespace zetcore::filesupport
