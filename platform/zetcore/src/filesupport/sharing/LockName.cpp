#include "filesupport/sharing/LockName.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <string>

#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/utility/Fnv1a.h>

namespace zetcore::filesupport {

File LockFileFor(const File& file)
{
    // Two paths that share a lock wait for one another and no more.
    const std::uint64_t hash = utility::Fnv1a(file.FullPathUTF8());
    std::array<char, 16> digits{};
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), hash, 16).ptr;
    return {commondirs::RuntimeDir(), L"zet-" + std::wstring(digits.data(), end) + L".lock"};
}

} // namespace zetcore::filesupport
