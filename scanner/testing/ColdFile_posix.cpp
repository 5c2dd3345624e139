#include "ColdFile_posix.h"

#include <chrono>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <zetcore/filesupport/handles/Descriptor.h>
#include <zetcore/utility/Backoff.h>
#include <zettesting/TemporaryFolder.h>

namespace zetaudiofilterscan {

using zetcore::filesupport::Descriptor;

bool MakeColdFile(const std::filesystem::path& path, std::size_t bytes)
{
    zettesting::WriteAll(path, std::string(bytes, 'x'));
    const Descriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC));
    EXPECT_EQ(::fsync(file.Get()), 0);
    ::posix_fadvise(file.Get(), 0, 0, POSIX_FADV_DONTNEED);
    return PartInMemory(path) < 0.1;
}

double PartInMemory(const std::filesystem::path& path)
{
    const Descriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC));
    const std::size_t size = std::filesystem::file_size(path);
    void* const bytes = ::mmap(nullptr, size, PROT_READ, MAP_SHARED, file.Get(), 0);
    EXPECT_NE(bytes, MAP_FAILED);
    const auto pageSize = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    std::vector<unsigned char> pages((size + pageSize - 1) / pageSize);
    EXPECT_EQ(::mincore(bytes, size, pages.data()), 0);
    ::munmap(bytes, size);
    std::size_t present = 0;
    for (const unsigned char page : pages)
        present += page & 1;
    return static_cast<double>(present) / static_cast<double>(pages.size());
}

bool WaitUntilInMemory(const std::filesystem::path& path)
{
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    zetcore::utility::Backoff pause;
    while (PartInMemory(path) < 1) {
        if (std::chrono::steady_clock::now() >= giveUp)
            return false;
        pause();
    }
    return true;
}

} // namespace zetaudiofilterscan
