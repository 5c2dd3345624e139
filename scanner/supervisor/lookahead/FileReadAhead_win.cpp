#include <algorithm>
#include <memory>

#include <windows.h>

#include <zetcore/filesupport/handles/Handle.h>
#include <zetcore/filesupport/paths/LongPath.h>
#include <zetcore/filesupport/paths/NativePath.h>

#include "supervisor/lookahead/FileReadAhead.h"

namespace zetaudiofilterscan {

using zetcore::filesupport::Handle;

namespace {

struct Unmap
{
    void operator()(void* view) const noexcept { ::UnmapViewOfFile(view); }
};

/// Null where the system does not have it.
decltype(&::PrefetchVirtualMemory) FindPrefetch()
{
    const HMODULE kernel = ::GetModuleHandleW(L"kernel32.dll");
    const FARPROC found = kernel ? ::GetProcAddress(kernel, "PrefetchVirtualMemory") : nullptr;
    return reinterpret_cast<decltype(&::PrefetchVirtualMemory)>(reinterpret_cast<void*>(found));
}

} // namespace

void ReadFileAhead(const std::wstring& path)
{
    static const auto prefetch = FindPrefetch();
    if (!prefetch)
        return;
    const std::wstring systemPath =
        zetcore::filesupport::LongForm(zetcore::filesupport::ToNativePath(path).native());
    const Handle file(::CreateFileW(systemPath.c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size{};
    if (!file.IsOpen() || ::GetFileType(file.Get()) != FILE_TYPE_DISK ||
        !::GetFileSizeEx(file.Get(), &size) || size.QuadPart <= 0)
        return;
    const Handle mapping(::CreateFileMappingW(file.Get(), nullptr, PAGE_READONLY, 0, 0, nullptr));
    const auto bytes = static_cast<SIZE_T>(std::min<LONGLONG>(size.QuadPart, mostBytesAhead));
    const std::unique_ptr<void, Unmap> view(
        mapping.IsOpen() ? ::MapViewOfFile(mapping.Get(), FILE_MAP_READ, 0, 0, bytes) : nullptr);
    if (!view)
        return;
    WIN32_MEMORY_RANGE_ENTRY range{view.get(), bytes};
    prefetch(::GetCurrentProcess(), 1, &range, 0);
}

} // namespace zetaudiofilterscan
