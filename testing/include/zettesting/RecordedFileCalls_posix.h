#pragma once

// Records the system calls that make a file's new content durable. This header defines those calls for the
// whole program, so only one of a program's sources may include it.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zettesting {

/// The calls made while this object exists, in order: "synchronise FILE, SIZE bytes", "synchronise folder
/// FOLDER", "rename to FILE", "swap with FILE". The names are the last parts of the paths; a temporary file
/// is called "temporary". One thread, and one recording at a time.
class RecordedFileCalls
{
  public:
    RecordedFileCalls() { current = this; }
    ~RecordedFileCalls() { current = nullptr; }
    RecordedFileCalls(const RecordedFileCalls&) = delete;
    RecordedFileCalls& operator=(const RecordedFileCalls&) = delete;

    const std::vector<std::string>& Calls() const noexcept { return calls; }

    static void Note(const std::string& call)
    {
        if (current)
            current->calls.push_back(call);
    }
    static std::string NameOf(const std::filesystem::path& path)
    {
        const std::string name = path.filename().string();
        return name.starts_with(".zet-") ? "temporary" : name;
    }

  private:
    inline static RecordedFileCalls* current = nullptr;
    std::vector<std::string> calls;
};

} // namespace zettesting

extern "C" {

[[gnu::visibility("default")]] int fsync(int descriptor)
{
    struct stat found
    {};
    ::fstat(descriptor, &found);
    std::error_code ignored;
    const std::string name = zettesting::RecordedFileCalls::NameOf(
        std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), ignored));
    zettesting::RecordedFileCalls::Note(
        S_ISDIR(found.st_mode) ? "synchronise folder " + name
                               : "synchronise " + name + ", " + std::to_string(found.st_size) + " bytes");
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

[[gnu::visibility("default")]] int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
                                             unsigned flags) noexcept
{
    zettesting::RecordedFileCalls::Note((flags ? "swap with " : "rename to ") +
                                        zettesting::RecordedFileCalls::NameOf(to));
    return static_cast<int>(::syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

[[gnu::visibility("default")]] int rename(const char* from, const char* to) noexcept
{
    return ::renameat2(AT_FDCWD, from, AT_FDCWD, to, 0);
}

} // extern "C"
