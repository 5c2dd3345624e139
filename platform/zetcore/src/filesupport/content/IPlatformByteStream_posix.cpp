#include <zetcore/filesupport/content/IPlatformByteStream.h>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <zetcore/filesupport/handles/Descriptor.h>
#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/FileException.h>

#include "filesupport/paths/CheckedPath.h"

namespace zetcore::filesupport {

namespace {

constexpr const char* readOperation = "read";

class FileStream : public IPlatformByteStream
{
  public:
    explicit FileStream(std::wstring filePath) : path(std::move(filePath))
    {
        // Somebody may have put a pipe there. Without O_NONBLOCK, opening it would wait for its writer.
        descriptor =
            Descriptor(::open(ToCheckedPath(readOperation, path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        if (!descriptor.IsOpen())
            throw file_exception(readOperation, path, LastSystemError());
        const struct stat status = Status();
        if (S_ISDIR(status.st_mode))
            throw file_exception(readOperation, path, std::make_error_code(std::errc::is_a_directory));
        if (!S_ISREG(status.st_mode))
            throw file_exception(readOperation, path, std::make_error_code(std::errc::not_supported));
    }

    std::uint64_t Length() const override { return static_cast<std::uint64_t>(Status().st_size); }

    std::size_t ReadBlock(void* buffer, std::size_t size) override
    {
        for (;;) {
            const ssize_t got = ::read(descriptor.Get(), buffer, size);
            if (got >= 0)
                return static_cast<std::size_t>(got);
            if (errno != EINTR)
                throw file_exception(readOperation, path, LastSystemError());
        }
    }

  private:
    struct stat Status() const
    {
        struct stat status
        {};
        if (::fstat(descriptor.Get(), &status) != 0)
            throw file_exception(readOperation, path, LastSystemError());
        return status;
    }

    std::wstring path;
    Descriptor descriptor;
};

} // namespace

IPlatformByteStream::~IPlatformByteStream() = default;

std::unique_ptr<IPlatformByteStream> IPlatformByteStream::OpenForReading(const File& file)
{
    return std::make_unique<FileStream>(file.FullPath());
}

} // namespace zetcore::filesupport
