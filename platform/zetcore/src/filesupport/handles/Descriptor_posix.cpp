#include <zetcore/filesupport/handles/Descriptor.h>

#include <cerrno>

#include <unistd.h>
#include <zetcore/filesupport/handles/SystemError.h>

namespace zetcore::filesupport {

bool Descriptor::Close() noexcept
{
    const int closing = Release();
    return closing < 0 || ::close(closing) == 0;
}

std::error_code Descriptor::WriteWhole(std::string_view bytes) const
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
