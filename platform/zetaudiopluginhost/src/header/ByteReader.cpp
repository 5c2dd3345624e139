#include "header/ByteReader.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginhost {

namespace {

constexpr std::size_t windowSize = 16384;
constexpr std::uint64_t windowAlignment = 4096;

} // namespace

ByteReader::~ByteReader() = default;

bool ByteReader::Contains(std::uint64_t offset, std::uint64_t length) const
{
    return offset <= Size() && length <= Size() - offset;
}

bool ByteReader::HasText(std::uint64_t offset, std::string_view text)
{
    std::array<char, 64> found{};
    if (text.size() + 1 > found.size() || !Read(offset, found.data(), text.size() + 1))
        return false;
    return found[text.size()] == 0 && std::string_view(found.data(), text.size()) == text;
}

bool MemoryByteReader::Read(std::uint64_t offset, void* buffer, std::size_t size)
{
    if (!Contains(offset, size))
        return false;
    if (size != 0)
        std::memcpy(buffer, bytes.data() + offset, size);
    return true;
}

FileByteReader::FileByteReader(const std::wstring& filePath) : path(filePath)
{
    if (zetcore::debug::FaultsAreOn()) {
        const std::string title = zetcore::string::UTF16to8(zetcore::filesupport::File(path).GetTitle());
        if (const std::error_code error = zetcore::debug::FaultError("read." + title))
            throw zetcore::filesupport::file_exception("read", path, error);
    }
    // Windows of our own replace the stream's buffer.
    file.rdbuf()->pubsetbuf(nullptr, 0);
    errno = 0;
    file.open(zetcore::filesupport::ToNativePath(path), std::ios::binary | std::ios::ate);
    const std::streamoff end = file ? static_cast<std::streamoff>(file.tellg()) : -1;
    if (end < 0)
        throw zetcore::filesupport::file_exception(
            "read", path, std::error_code(errno != 0 ? errno : EIO, std::generic_category()));
    size = static_cast<std::uint64_t>(end);
}

bool FileByteReader::FillWindow(std::uint64_t offset)
{
    windowStart = offset - offset % windowAlignment;
    window.resize(static_cast<std::size_t>(std::min<std::uint64_t>(windowSize, size - windowStart)));
    file.clear();
    file.seekg(static_cast<std::streamoff>(windowStart));
    file.read(window.data(), static_cast<std::streamsize>(window.size()));
    if (file.bad())
        throw zetcore::filesupport::file_exception("read", path, std::make_error_code(std::errc::io_error));
    // A file that became shorter meanwhile gives fewer bytes.
    window.resize(file.gcount() > 0 ? static_cast<std::size_t>(file.gcount()) : 0);
    return !window.empty();
}

bool FileByteReader::Read(std::uint64_t offset, void* buffer, std::size_t wanted)
{
    if (!Contains(offset, wanted))
        return false;
    char* to = static_cast<char*>(buffer);
    while (wanted > 0) {
        const bool inside = offset >= windowStart && offset - windowStart < window.size();
        if (!inside && (!FillWindow(offset) || offset - windowStart >= window.size()))
            return false;
        const std::size_t from = static_cast<std::size_t>(offset - windowStart);
        const std::size_t part = std::min(wanted, window.size() - from);
        std::memcpy(to, window.data() + from, part);
        to += part;
        offset += part;
        wanted -= part;
    }
    return true;
}

} // namespace zetaudiopluginhost
