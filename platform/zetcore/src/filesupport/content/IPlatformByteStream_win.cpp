#include <zetcore/filesupport/content/IPlatformByteStream.h>

#include <algorithm>

#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/FileException.h>

#include "filesupport/paths/CheckedPath.h"
#include "filesupport/paths/FileStatus.h"
#include "filesupport/paths/SharedOpening_win.h"

namespace zetcore::filesupport {

namespace {

constexpr const char* readOperation = "read";

class FileStream : public IPlatformByteStream
{
  public:
    explicit FileStream(std::wstring filePath) : path(std::move(filePath))
    {
        const std::filesystem::path native = ToCheckedPath(readOperation, path);
        std::error_code error;
        // Windows answers "access denied" when a folder is opened, which would send the user the wrong way.
        if (ReadFileStatus(native, error).kind == FileKind::Folder && !error)
            throw file_exception(readOperation, path, std::make_error_code(std::errc::is_a_directory));
        handle = OpenShared(native, GENERIC_READ);
        if (!handle.IsOpen())
            throw file_exception(readOperation, path, LastSystemError());
        if (::GetFileType(handle.Get()) != FILE_TYPE_DISK)
            throw file_exception(readOperation, path, std::make_error_code(std::errc::not_supported));
    }

    std::uint64_t Length() const override
    {
        LARGE_INTEGER size{};
        if (::GetFileSizeEx(handle.Get(), &size) == 0)
            throw file_exception(readOperation, path, LastSystemError());
        return static_cast<std::uint64_t>(size.QuadPart);
    }

    std::size_t ReadBlock(void* buffer, std::size_t size) override
    {
        constexpr std::size_t largestRead = std::size_t{1} << 30;
        DWORD got = 0;
        if (::ReadFile(handle.Get(), buffer, static_cast<DWORD>(std::min(size, largestRead)), &got,
                       nullptr) == 0)
            throw file_exception(readOperation, path, LastSystemError());
        return got;
    }

  private:
    std::wstring path;
    Handle handle;
};

} // namespace

IPlatformByteStream::~IPlatformByteStream() = default;

std::unique_ptr<IPlatformByteStream> IPlatformByteStream::OpenForReading(const File& file)
{
    return std::make_unique<FileStream>(file.FullPath());
}

} // namespace zetcore::filesupport
