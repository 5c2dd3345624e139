#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/File.h>

namespace zetcore::filesupport {

/// A file opened for reading, without any text translation; others may read and write it meanwhile.
/// One thread at a time. Closed by its destructor.
class ZETCORE_API IPlatformByteStream
{
  public:
    virtual ~IPlatformByteStream();

    /// Throws `file_exception` when the file cannot be opened.
    static std::unique_ptr<IPlatformByteStream> OpenForReading(const File& file);

    /// Length in bytes at the time of the call.
    virtual std::uint64_t Length() const = 0;
    /// Reads up to `size` bytes from the current place; returns how many, 0 at the end. Throws
    /// `file_exception`.
    virtual std::size_t ReadBlock(void* buffer, std::size_t size) = 0;
};

} // namespace zetcore::filesupport
