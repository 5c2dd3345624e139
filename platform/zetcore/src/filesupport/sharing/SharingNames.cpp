#include "filesupport/sharing/SharingNames.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <stdexcept>

#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/utility/Fnv1a.h>

namespace zetcore::filesupport {

File LockFileFor(const File& file)
{
    // Two paths may get the same hash. Then they share a lock, and one waits for the other, which does no
    // harm.
    const std::uint64_t hash = utility::Fnv1a(file.FullPathUTF8());
    std::array<char, 16> digits{};
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), hash, 16).ptr;
    return {commondirs::RuntimeDir(), L"zet-" + std::wstring(digits.data(), end) + L".lock"};
}

bool IsBlockName(const std::string& name)
{
    constexpr std::size_t longest = 200;
    return !name.empty() && name.size() <= longest && name.front() != '.' &&
           std::all_of(name.begin(), name.end(), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                      c == '-' || c == '_' || c == '.';
           });
}

void CheckBlock(const std::string& name, std::size_t size, int flags)
{
    const auto refuse = [&name](const std::string& reason) {
        throw std::invalid_argument("Cannot map the block \"" + name + "\": " + reason);
    };
    constexpr std::size_t largest = std::size_t{1} << 30;
    constexpr int known = MemoryMappedFile::CreateLocked;
    if (!IsBlockName(name))
        refuse("the name is not usable");
    if (size == 0 || size > largest)
        refuse("a size of " + std::to_string(size) + " bytes is not usable");
    if ((flags & ~known) != 0 || (flags & MemoryMappedFile::Read) == 0)
        refuse("flags " + std::to_string(flags) + " are not known");
    if ((flags & MemoryMappedFile::Create) != 0 && (flags & MemoryMappedFile::Write) == 0)
        refuse("a block cannot be created for reading only");
}

} // namespace zetcore::filesupport
