#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace zetaudiopluginhost {

/// Bytes at offsets, none of which is trusted: what does not lie inside is not read.
class ByteReader
{
  public:
    virtual ~ByteReader();

    virtual std::uint64_t Size() const = 0;
    /// All of `size` bytes from `offset`, or false.
    virtual bool Read(std::uint64_t offset, void* buffer, std::size_t size) = 0;

    /// A value in this machine's (little-endian) order.
    template<class T>
    requires std::is_trivially_copyable_v<T>
    bool ReadValue(std::uint64_t offset, T& value) { return Read(offset, &value, sizeof(T)); }
    /// True when the text stands at the offset with a zero byte behind it.
    bool HasText(std::uint64_t offset, std::string_view text);
    /// True when all of [offset, offset + length) lies inside.
    bool Contains(std::uint64_t offset, std::uint64_t length) const;
};

class MemoryByteReader : public ByteReader
{
  public:
    explicit MemoryByteReader(std::string_view all) : bytes(all) {}

    std::uint64_t Size() const override { return bytes.size(); }
    bool Read(std::uint64_t offset, void* buffer, std::size_t size) override;

  private:
    std::string_view bytes;
};

/// Reads a file through one small window, so that a large module costs a few reads.
class FileByteReader : public ByteReader
{
  public:
    /// Throws `file_exception` when the file cannot be opened, as `Read` does when the system cannot read it.
    /// It must be a regular file: others may block.
    explicit FileByteReader(const std::wstring& path);

    std::uint64_t Size() const override { return size; }
    bool Read(std::uint64_t offset, void* buffer, std::size_t wanted) override;

  private:
    bool FillWindow(std::uint64_t offset);

    std::wstring path;
    std::ifstream file;
    std::uint64_t size = 0;
    std::uint64_t windowStart = 0;
    std::vector<char> window;
};

} // namespace zetaudiopluginhost
