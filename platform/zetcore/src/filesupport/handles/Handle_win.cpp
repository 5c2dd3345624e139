#include <zetcore/filesupport/handles/Handle.h>

#include <algorithm>

#include <windows.h>
#include <zetcore/filesupport/handles/SystemError.h>

namespace zetcore::filesupport {

void Handle::Close() noexcept
{
    if (HANDLE const closing = Release())
        ::CloseHandle(closing);
}

std::error_code Handle::WriteWhole(std::string_view bytes) const
{
    constexpr std::size_t largestWrite = std::size_t{1} << 30;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min(bytes.size(), largestWrite));
        if (::WriteFile(handle, bytes.data(), size, &written, nullptr) == 0)
            return LastSystemError();
        bytes.remove_prefix(written);
    }
    return {};
}

} // namespace zetcore::filesupport
