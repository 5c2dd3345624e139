#include <zettesting/UnwritableFile.h>

#include <stdexcept>

#include <windows.h>

namespace zettesting {

struct UnwritableFile::State
{
    HANDLE handle;
    ~State() { ::CloseHandle(handle); }
};

UnwritableFile::UnwritableFile(const std::filesystem::path& file)
{
    const HANDLE handle = ::CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        throw std::runtime_error("cannot hold " + file.string());
    state.reset(new State{handle});
}

UnwritableFile::~UnwritableFile() = default;

} // namespace zettesting
