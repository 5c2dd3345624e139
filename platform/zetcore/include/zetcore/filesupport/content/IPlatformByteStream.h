#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/File.h>

namespace zetcore::filesupport {

/// A file that is open for reading, without any text translation. Others may read and write it meanwhile. Its
/// destructor closes it. One thread at a time.
class ZETCORE_API IPlatformByteStream
{
  public:
    virtual ~IPlatformByteStream();

    /// Throws `file_exception` when the file cannot be opened.
    static std::unique_ptr<IPlatformByteStream> OpenForReading(const File& file);

    /// The length in bytes at the time of the call.
    virtual std::uint64_t Length() const = 0;
    /// Reads up to `size` bytes from the current place. Returns how many it has read, 0 at the end. Throws
    /// `file_exception`.
    virtual std::size_t ReadBlock(void* buffer, std::size_t size) = 0;
};

} // namespace zetcore::filesupport
