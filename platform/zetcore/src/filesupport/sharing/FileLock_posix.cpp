#include <zetcore/filesupport/sharing/FileLock.h>

#include <exception>

#include <fcntl.h>
#include <unistd.h>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/handles/Descriptor.h>
#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/FileException.h>

#include "filesupport/paths/CheckedPath.h"
#include "filesupport/sharing/HandleLock_posix.h"
#include "filesupport/sharing/SharingNames.h"

namespace zetcore::filesupport {

struct FileLock::Held
{
    Descriptor file;
};

FileLock::FileLock(const File& file, std::chrono::milliseconds limit)
{
    constexpr const char* operation = "lock";
    try {
        const File lock = LockFileFor(file);
        auto taking = std::make_unique<Held>();
        taking->file = Descriptor(::open(ToCheckedPath(operation, lock.FullPath()).c_str(),
                                         O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (!taking->file.IsOpen())
            throw file_exception(operation, file.FullPath(), LastSystemError());
        if (const std::error_code error = LockWithin(taking->file.Get(), limit))
            throw file_exception(operation, file.FullPath(), error);
        held = std::move(taking);
    } catch (const std::exception& error) {
        debug::TraceLine(1, "FileLock", error.what());
    }
}

// The descriptor is closed here, which gives the lock up.
FileLock::~FileLock() = default;

} // namespace zetcore::filesupport
