#include "filesupport/LockName.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <string>

#include <zetcore/filesupport/CommonDirs.h>

namespace zetcore::filesupport {

File LockFileFor(const File& file)
{
    // 64-bit FNV-1a: two paths that share a lock wait for one another and no more.
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : file.FullPathUTF8()) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 0x100000001b3;
    }
    std::array<char, 16> digits{};
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), hash, 16).ptr;
    return {commondirs::RuntimeDir(), L"zet-" + std::wstring(digits.data(), end) + L".lock"};
}

} // namespace zetcore::filesupport
