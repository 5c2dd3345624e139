#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include <unistd.h>

#include <zetcore/string/ParseNumber.h>

#include "PeakMemory.h"

namespace bench {

namespace {

std::string Read(const std::filesystem::path& file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

/// In MiB. Only the user's own and ordinary processes tell what they share.
double MemoryOf(int process)
{
    constexpr double kibibytes = 1024;
    const std::filesystem::path folder = "/proc/" + std::to_string(process);
    std::istringstream shared(Read(folder / "smaps_rollup"));
    for (std::string word; shared >> word;) {
        double size = 0;
        if (word == "Pss:" && shared >> size)
            return size / kibibytes;
    }
    std::istringstream pages(Read(folder / "statm"));
    double total = 0, resident = 0;
    pages >> total >> resident;
    return resident * static_cast<double>(::sysconf(_SC_PAGESIZE)) / kibibytes / kibibytes;
}

/// The parent of each process.
std::map<int, int> Parents()
{
    std::map<int, int> parents;
    std::error_code error;
    for (std::filesystem::directory_iterator entries("/proc", error);
         !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        const auto number = zetcore::string::ParseNumber<int>(entries->path().filename().string());
        if (!number)
            continue;
        // "NUMBER (NAME) STATE PARENT ...", where the name may hold anything.
        const std::string text = Read(entries->path() / "stat");
        const std::size_t name = text.rfind(')');
        std::string state;
        int parent = 0;
        if (name != text.npos && std::istringstream(text.substr(name + 1)) >> state >> parent)
            parents.emplace(*number, parent);
    }
    return parents;
}

} // namespace

ScanMemory MemoryOfChildren()
{
    const std::map<int, int> parents = Parents();
    ScanMemory memory;
    for (const auto& [process, directParent] : parents) {
        bool isOurs = false;
        for (auto at = parents.find(directParent); !isOurs && at != parents.end();
             at = parents.find(at->second))
            isOurs = at->first == ::getpid();
        if (!isOurs)
            continue;
        const std::string command = Read("/proc/" + std::to_string(process) + "/cmdline");
        const std::string program = command.substr(0, command.find('\0'));
        if (program.ends_with("/zetaudiopluginmanager")) {
            memory.host += MemoryOf(process);
        } else if (program.ends_with("/zetaudiofilterscan")) {
            memory.scanner += MemoryOf(process);
            memory.workers += command.find("--worker") != command.npos;
        }
    }
    return memory;
}

} // namespace bench
