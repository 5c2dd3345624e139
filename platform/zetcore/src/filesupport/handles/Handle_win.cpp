#include <zetcore/filesupport/handles/Handle.h>

#include <windows.h>

namespace zetcore::filesupport {

void Handle::Close() noexcept
{
    if (HANDLE const closing = std::exchange(handle, nullptr))
        ::CloseHandle(closing);
}

} // namespace zetcore::filesupport
