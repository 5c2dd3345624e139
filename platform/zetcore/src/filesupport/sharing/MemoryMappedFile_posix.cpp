#include <zetcore/filesupport/sharing/MemoryMappedFile.h>

#include <chrono>
#include <exception>
#include <system_error>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/handles/Descriptor.h>
#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/FileException.h>

#include "filesupport/paths/CheckedPath.h"
#include "filesupport/sharing/HandleLock_posix.h"
#include "filesupport/sharing/SharingNames.h"

namespace zetcore::filesupport {

namespace {

constexpr std::chrono::seconds longestWaitForLock{120};

struct Request
{
    std::wstring path;
    std::size_t size;
    bool write;
    bool create;

    [[noreturn]] void Fail(std::error_code cause) const { throw file_exception("map", path, cause); }
    [[noreturn]] void Fail(std::errc cause) const { Fail(std::make_error_code(cause)); }
};

struct stat StatusOf(const Descriptor& file, const Request& request)
{
    struct stat status
    {};
    if (::fstat(file.Get(), &status) != 0)
        request.Fail(LastSystemError());
    return status;
}

Descriptor OpenOwnFile(const Request& request)
{
    const int access = request.write ? O_RDWR : O_RDONLY;
    Descriptor file(::open(ToNativePath(request.path).c_str(),
                           access | (request.create ? O_CREAT : 0) | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK,
                           0600));
    if (!file.IsOpen())
        request.Fail(LastSystemError());
    const struct stat status = StatusOf(file, request);
    if (!S_ISREG(status.st_mode))
        request.Fail(std::errc::not_supported);
    if (status.st_uid != ::geteuid())
        request.Fail(std::errc::permission_denied);
    if ((status.st_mode & 0777) != 0600 && ::fchmod(file.Get(), 0600) != 0)
        request.Fail(LastSystemError());
    return file;
}

Descriptor OpenBlock(const Request& request)
{
    Descriptor file = OpenOwnFile(request);
    if (request.create) {
        if (const std::error_code error = LockWithin(file.Get(), longestWaitForLock))
            request.Fail(error);
        // The room on the medium is taken now. On a full medium, the first write into the mapping would kill
        // the process.
        if (const int error = ::posix_fallocate(file.Get(), 0, static_cast<off_t>(request.size)))
            request.Fail({error, std::generic_category()});
    } else if (StatusOf(file, request).st_size < static_cast<off_t>(request.size)) {
        request.Fail(std::errc::invalid_argument);
    }
    return file;
}

} // namespace

struct MemoryMappedFile::Mapping
{
    explicit Mapping(const Request& request)
        : file(OpenBlock(request)), size(request.size),
          address(::mmap(nullptr, size, request.write ? PROT_READ | PROT_WRITE : PROT_READ, MAP_SHARED,
                         file.Get(), 0))
    {
        if (address == MAP_FAILED)
            request.Fail(LastSystemError());
    }

    ~Mapping() { ::munmap(address, size); }

    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;

    Descriptor file;
    std::size_t size;
    void* address;
};

MemoryMappedFile::MemoryMappedFile() = default;
MemoryMappedFile::~MemoryMappedFile() = default;

bool MemoryMappedFile::Init(const std::string& name, std::size_t size, int flags)
{
    mapping.reset();
    try {
        CheckBlock(name, size, flags);
        const File file(commondirs::RuntimeDir(), std::wstring(name.begin(), name.end()));
        mapping = std::make_unique<Mapping>(
            Request{file.FullPath(), size, (flags & Write) != 0, (flags & Create) != 0});
        return true;
    } catch (const std::exception& error) {
        debug::TraceLine(1, "MemoryMappedFile", error.what());
        return false;
    }
}

void* MemoryMappedFile::GetAddress() const noexcept
{
    return mapping ? mapping->address : nullptr;
}

void MemoryMappedFile::CloseFileHandleIfPossible()
{
    if (!mapping || !mapping->file.IsOpen())
        return;
    // The mapping keeps the opened file alive, so the lock would outlive the descriptor.
    Unlock(mapping->file.Get());
    mapping->file.Close();
}

} // namespace zetcore::filesupport
