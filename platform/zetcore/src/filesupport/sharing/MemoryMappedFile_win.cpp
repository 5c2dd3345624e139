#include <zetcore/filesupport/sharing/MemoryMappedFile.h>

#include <chrono>
#include <exception>
#include <system_error>

#include <windows.h>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/handles/Handle.h>
#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/Backoff.h>

#include "filesupport/paths/CheckedPath.h"
#include "filesupport/paths/SharedOpening_win.h"
#include "filesupport/sharing/SharingNames.h"

namespace zetcore::filesupport {

namespace {

constexpr std::chrono::seconds longestWaitForLock{120};

/// The lock is a file that only one handle can have open. A mutex would belong to a thread. The file belongs
/// to the process and goes with it, whatever ends it.
Handle Lock(const std::wstring& name)
{
    const File file(commondirs::RuntimeDir(), name + L".lock");
    const auto giveUp = std::chrono::steady_clock::now() + longestWaitForLock;
    utility::Backoff pause;
    for (;;) {
        Handle lock(::CreateFileW(SystemPath(file.FullPath()).c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                                  0, nullptr, OPEN_ALWAYS,
                                  FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
        if (lock.IsOpen())
            return lock;
        // A file that is just being deleted answers "access denied".
        const std::error_code error = LastSystemError();
        const bool held = error.value() == ERROR_SHARING_VIOLATION || error.value() == ERROR_ACCESS_DENIED;
        if (!held)
            throw file_exception("lock", file.FullPath(), error);
        if (std::chrono::steady_clock::now() >= giveUp)
            throw file_exception("lock", file.FullPath(), std::make_error_code(std::errc::timed_out));
        pause();
    }
}

} // namespace

struct MemoryMappedFile::Mapping
{
    Mapping(const std::string& name, std::size_t size, int flags)
    {
        const std::wstring wideName = string::AsciiToUTF16(name);
        const std::wstring objectName = L"Local\\" + wideName;
        const bool write = (flags & Write) != 0;
        const DWORD access = FILE_MAP_READ | (write ? FILE_MAP_WRITE : 0);
        if ((flags & Create) != 0) {
            lock = Lock(wideName);
            section = Handle(::CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                                  static_cast<DWORD>(size), objectName.c_str()));
        } else {
            section = Handle(::OpenFileMappingW(access, FALSE, objectName.c_str()));
        }
        if (!section.IsOpen())
            throw file_exception("map", objectName, LastSystemError());
        // This fails when another process has made the block, and it is smaller.
        address = ::MapViewOfFile(section.Get(), access, 0, 0, size);
        if (address == nullptr)
            throw file_exception("map", objectName, LastSystemError());
    }

    ~Mapping() { ::UnmapViewOfFile(address); }

    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;

    Handle lock;
    Handle section;
    void* address = nullptr;
};

MemoryMappedFile::MemoryMappedFile() = default;
MemoryMappedFile::~MemoryMappedFile() = default;

bool MemoryMappedFile::Init(const std::string& name, std::size_t size, int flags)
{
    mapping.reset();
    try {
        CheckBlock(name, size, flags);
        mapping = std::make_unique<Mapping>(name, size, flags);
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
    if (mapping) {
        mapping->section.Close();
        mapping->lock.Close();
    }
}

} // namespace zetcore::filesupport
