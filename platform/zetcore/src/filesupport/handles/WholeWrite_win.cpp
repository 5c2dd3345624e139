#include "filesupport/handles/WholeWrite_win.h"

#include <algorithm>

#include "filesupport/handles/SystemError.h"

namespace zetcore::filesupport {

std::error_code WriteWhole(HANDLE file, std::string_view bytes)
{
    constexpr std::size_t largestWrite = std::size_t{1} << 30;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min(bytes.size(), largestWrite));
        if (::WriteFile(file, bytes.data(), size, &written, nullptr) == 0)
            return LastSystemError();
        bytes.remove_prefix(written);
    }
    return {};
}

} // namespace zetcore::filesupport
