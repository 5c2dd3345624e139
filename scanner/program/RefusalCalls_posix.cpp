// These functions stand before those of the C library for the plug-ins of this program, because symbols of
// the program are found first. Each calls the library's and tells of what was refused.
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>

#include "worker/RefusalNote_posix.h"

namespace zetaudiofilterscan {

namespace {

/// A function of the next library that has it.
template<typename Function>
class Next
{
  public:
    explicit constexpr Next(const char* itsName) : name(itsName) {}
    template<typename... Arguments>
    auto operator()(Arguments... arguments)
    {
        void* function = found.load(std::memory_order_relaxed);
        if (!function) {
            function = ::dlsym(RTLD_NEXT, name);
            found.store(function, std::memory_order_relaxed);
        }
        return reinterpret_cast<Function*>(function)(arguments...);
    }

  private:
    const char* name;
    std::atomic<void*> found{nullptr};
};

using Open = int(const char*, int, mode_t);
using OpenAt = int(int, const char*, int, mode_t);
using OpenStream = std::FILE*(const char*, const char*);
using OnPath = int(const char*);
using OnPathWithMode = int(const char*, mode_t);
using OnPathWithLength = int(const char*, off_t);
using OnTwoPaths = int(const char*, const char*);

constexpr char toWrite[] = "write to";
constexpr char toDelete[] = "delete";
constexpr char toMove[] = "move";
constexpr char toMake[] = "make";

constexpr bool IsForWriting(int flags)
{
    return (flags & (O_ACCMODE | O_CREAT | O_TRUNC)) != 0;
}

int NotedOpen(int result, int flags, int folder, const char* path)
{
    return Noted(result, result < 0 && IsForWriting(flags), toWrite, folder, path);
}

int NotedCall(int result, const char* what, const char* path, int folder = AT_FDCWD)
{
    return Noted(result, result != 0, what, folder, path);
}

std::FILE* NotedStream(std::FILE* result, const char* mode, const char* path)
{
    return Noted(result, !result && std::strpbrk(mode, "wa+") != nullptr, toWrite, AT_FDCWD, path);
}

constinit Next<Open> nextOpen{"open"};
constinit Next<Open> nextOpen64{"open64"};
constinit Next<OpenAt> nextOpenAt{"openat"};
constinit Next<OpenAt> nextOpenAt64{"openat64"};
constinit Next<int(const char*, int)> nextCheckedOpen{"__open_2"};
constinit Next<int(const char*, int)> nextCheckedOpen64{"__open64_2"};
constinit Next<OnPathWithMode> nextCreate{"creat"};
constinit Next<OnPathWithMode> nextCreate64{"creat64"};
constinit Next<OpenStream> nextOpenStream{"fopen"};
constinit Next<OpenStream> nextOpenStream64{"fopen64"};
constinit Next<OnPath> nextUnlink{"unlink"};
constinit Next<int(int, const char*, int)> nextUnlinkAt{"unlinkat"};
constinit Next<OnPath> nextRemove{"remove"};
constinit Next<OnPath> nextRemoveFolder{"rmdir"};
constinit Next<OnTwoPaths> nextRename{"rename"};
constinit Next<int(int, const char*, int, const char*)> nextRenameAt{"renameat"};
constinit Next<int(int, const char*, int, const char*, unsigned)> nextRenameAt2{"renameat2"};
constinit Next<OnPathWithMode> nextMakeFolder{"mkdir"};
constinit Next<int(int, const char*, mode_t)> nextMakeFolderAt{"mkdirat"};
constinit Next<OnPathWithLength> nextTruncate{"truncate"};
constinit Next<OnPathWithLength> nextTruncate64{"truncate64"};
constinit Next<OnTwoPaths> nextLink{"link"};
constinit Next<OnTwoPaths> nextLinkSymbolically{"symlink"};

} // namespace

} // namespace zetaudiofilterscan

// The C library's declarations are not repeated: these have names of their own for the compiler.
#define ZET_STANDS_FOR(name) __asm__(name) __attribute__((visibility("default"), used))

extern "C" {

int ZetOpen(const char* path, int flags, ...) ZET_STANDS_FOR("open");
int ZetOpen64(const char* path, int flags, ...) ZET_STANDS_FOR("open64");
int ZetOpenAt(int folder, const char* path, int flags, ...) ZET_STANDS_FOR("openat");
int ZetOpenAt64(int folder, const char* path, int flags, ...) ZET_STANDS_FOR("openat64");
int ZetCheckedOpen(const char* path, int flags) ZET_STANDS_FOR("__open_2");
int ZetCheckedOpen64(const char* path, int flags) ZET_STANDS_FOR("__open64_2");
int ZetCreate(const char* path, mode_t mode) ZET_STANDS_FOR("creat");
int ZetCreate64(const char* path, mode_t mode) ZET_STANDS_FOR("creat64");
std::FILE* ZetOpenStream(const char* path, const char* mode) ZET_STANDS_FOR("fopen");
std::FILE* ZetOpenStream64(const char* path, const char* mode) ZET_STANDS_FOR("fopen64");
int ZetUnlink(const char* path) ZET_STANDS_FOR("unlink");
int ZetUnlinkAt(int folder, const char* path, int flags) ZET_STANDS_FOR("unlinkat");
int ZetRemove(const char* path) ZET_STANDS_FOR("remove");
int ZetRemoveFolder(const char* path) ZET_STANDS_FOR("rmdir");
int ZetRename(const char* from, const char* to) ZET_STANDS_FOR("rename");
int ZetRenameAt(int fromFolder, const char* from, int toFolder, const char* to) ZET_STANDS_FOR("renameat");
int ZetRenameAt2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags)
    ZET_STANDS_FOR("renameat2");
int ZetMakeFolder(const char* path, mode_t mode) ZET_STANDS_FOR("mkdir");
int ZetMakeFolderAt(int folder, const char* path, mode_t mode) ZET_STANDS_FOR("mkdirat");
int ZetTruncate(const char* path, off_t length) ZET_STANDS_FOR("truncate");
int ZetTruncate64(const char* path, off_t length) ZET_STANDS_FOR("truncate64");
int ZetLink(const char* from, const char* to) ZET_STANDS_FOR("link");
int ZetLinkSymbolically(const char* from, const char* to) ZET_STANDS_FOR("symlink");

} // extern "C"

using namespace zetaudiofilterscan;

// The mode is there only with some flags. Without it the register holds anything, which the library ignores,
// too.
#define ZET_MODE_AFTER(last)                                                                                 \
    std::va_list rest;                                                                                       \
    va_start(rest, last);                                                                                    \
    const auto mode = va_arg(rest, mode_t);                                                                  \
    va_end(rest)

int ZetOpen(const char* path, int flags, ...)
{
    ZET_MODE_AFTER(flags);
    return NotedOpen(nextOpen(path, flags, mode), flags, AT_FDCWD, path);
}

int ZetOpen64(const char* path, int flags, ...)
{
    ZET_MODE_AFTER(flags);
    return NotedOpen(nextOpen64(path, flags, mode), flags, AT_FDCWD, path);
}

int ZetOpenAt(int folder, const char* path, int flags, ...)
{
    ZET_MODE_AFTER(flags);
    return NotedOpen(nextOpenAt(folder, path, flags, mode), flags, folder, path);
}

int ZetOpenAt64(int folder, const char* path, int flags, ...)
{
    ZET_MODE_AFTER(flags);
    return NotedOpen(nextOpenAt64(folder, path, flags, mode), flags, folder, path);
}

int ZetCheckedOpen(const char* path, int flags)
{
    return NotedOpen(nextCheckedOpen(path, flags), flags, AT_FDCWD, path);
}

int ZetCheckedOpen64(const char* path, int flags)
{
    return NotedOpen(nextCheckedOpen64(path, flags), flags, AT_FDCWD, path);
}

int ZetCreate(const char* path, mode_t mode)
{
    return NotedOpen(nextCreate(path, mode), O_CREAT, AT_FDCWD, path);
}

int ZetCreate64(const char* path, mode_t mode)
{
    return NotedOpen(nextCreate64(path, mode), O_CREAT, AT_FDCWD, path);
}

std::FILE* ZetOpenStream(const char* path, const char* mode)
{
    return NotedStream(nextOpenStream(path, mode), mode, path);
}

std::FILE* ZetOpenStream64(const char* path, const char* mode)
{
    return NotedStream(nextOpenStream64(path, mode), mode, path);
}

int ZetUnlink(const char* path)
{
    return NotedCall(nextUnlink(path), toDelete, path);
}

int ZetUnlinkAt(int folder, const char* path, int flags)
{
    return NotedCall(nextUnlinkAt(folder, path, flags), toDelete, path, folder);
}

int ZetRemove(const char* path)
{
    return NotedCall(nextRemove(path), toDelete, path);
}

int ZetRemoveFolder(const char* path)
{
    return NotedCall(nextRemoveFolder(path), toDelete, path);
}

int ZetRename(const char* from, const char* to)
{
    return NotedCall(nextRename(from, to), toMove, from);
}

int ZetRenameAt(int fromFolder, const char* from, int toFolder, const char* to)
{
    return NotedCall(nextRenameAt(fromFolder, from, toFolder, to), toMove, from, fromFolder);
}

int ZetRenameAt2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags)
{
    return NotedCall(nextRenameAt2(fromFolder, from, toFolder, to, flags), toMove, from, fromFolder);
}

int ZetMakeFolder(const char* path, mode_t mode)
{
    return NotedCall(nextMakeFolder(path, mode), toMake, path);
}

int ZetMakeFolderAt(int folder, const char* path, mode_t mode)
{
    return NotedCall(nextMakeFolderAt(folder, path, mode), toMake, path, folder);
}

int ZetTruncate(const char* path, off_t length)
{
    return NotedCall(nextTruncate(path, length), toWrite, path);
}

int ZetTruncate64(const char* path, off_t length)
{
    return NotedCall(nextTruncate64(path, length), toWrite, path);
}

int ZetLink(const char* from, const char* to)
{
    return NotedCall(nextLink(from, to), toMake, to);
}

int ZetLinkSymbolically(const char* from, const char* to)
{
    return NotedCall(nextLinkSymbolically(from, to), toMake, to);
}
