// Another program that uses a block of memory.
//   zetblockuser change NAME   reads "volume" in it, and writes "port" over its start
//   zetblockuser hold NAME     makes it, locked, says "locked", and waits to be killed
#include <cstdio>
#include <cstring>
#include <future>
#include <string_view>

#include <zetcore/filesupport/sharing/MemoryMappedFile.h>

int main(int count, char** arguments)
{
    using zetcore::filesupport::MemoryMappedFile;
    if (count != 3)
        return 9;
    const bool holds = std::string_view(arguments[1]) == "hold";
    MemoryMappedFile block;
    if (!block.Init(arguments[2], 8, holds ? MemoryMappedFile::CreateLocked : MemoryMappedFile::OpenShared))
        return 1;
    if (holds) {
        std::fputs("locked\n", stderr);
        std::fflush(stderr);
        std::promise<void>().get_future().wait();
    }
    if (std::memcmp(block.GetAddress(), "volume", 6) != 0)
        return 2;
    std::memcpy(block.GetAddress(), "port", 4);
    return 0;
}
