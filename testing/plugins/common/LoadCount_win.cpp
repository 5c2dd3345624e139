#include "LoadCount.h"

#include <cstdlib>

#include <windows.h>

namespace zettestplugin {

namespace {

/// Each process that counts has locked one byte of the file.
constexpr int mostProcesses = 64;
HANDLE file = INVALID_HANDLE_VALUE;

bool LockByte(int number, DWORD kind)
{
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(number);
    return ::LockFileEx(file, kind | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0;
}

void UnlockByte(int number)
{
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(number);
    ::UnlockFileEx(file, 0, 1, 0, &place);
}

} // namespace

int CountProcesses()
{
    const char* name = std::getenv("ZET_TEST_PLUGIN_COUNT");
    if (!name)
        return 1;
    file = ::CreateFileA(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                         OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return 1;
    int own = 0;
    while (own < mostProcesses && !LockByte(own, LOCKFILE_EXCLUSIVE_LOCK))
        ++own;
    int count = 1;
    // A look is a lock that others may share. So two that look at the same byte do not count each other.
    constexpr DWORD shared = 0;
    for (int other = 0; other < mostProcesses; ++other) {
        if (other == own)
            continue;
        if (LockByte(other, shared))
            UnlockByte(other);
        else
            ++count;
    }
    return count;
}

void EndCounting()
{
    ::CloseHandle(file);
}

} // namespace zettestplugin
