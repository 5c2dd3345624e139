#include <zetcore/filesupport/sharing/FileLock.h>

#include <exception>

#include <windows.h>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/handles/Handle.h>
#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/utility/Backoff.h>

#include "filesupport/paths/CheckedPath.h"
#include "filesupport/paths/SharedOpening_win.h"
#include "filesupport/sharing/SharingNames.h"

namespace zetcore::filesupport {

struct FileLock::Held
{
    Handle file;
};

FileLock::FileLock(const File& file, std::chrono::milliseconds limit)
{
    constexpr const char* operation = "lock";
    try {
        const auto path = ToCheckedPath(operation, LockFileFor(file).FullPath());
        const auto giveUp = std::chrono::steady_clock::now() + limit;
        auto taking = std::make_unique<Held>();
        utility::Backoff pause;
        for (;;) {
            // It is shared with nobody, so the program that has it open has the lock.
            taking->file = Handle(::CreateFileW(SystemPath(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                                nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
            if (taking->file.IsOpen())
                break;
            const bool isHeldByAnother = ::GetLastError() == ERROR_SHARING_VIOLATION;
            if (!isHeldByAnother || std::chrono::steady_clock::now() >= giveUp)
                throw file_exception(operation, file.FullPath(), LastSystemError());
            pause();
        }
        held = std::move(taking);
    } catch (const std::exception& error) {
        debug::TraceLine(1, "FileLock", error.what());
    }
}

FileLock::~FileLock() = default;

} // namespace zetcore::filesupport
