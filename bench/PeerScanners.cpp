#include "PeerScanners.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "CommandOutput.h"
#include "Measure.h"

namespace bench {

namespace fs = std::filesystem;

namespace {

using Modules = std::vector<std::string>;
using Commands = std::vector<std::string>;

/// It finds the libraries beside it, and keeps what it has found in the home folder.
std::string ArdourCommand(const fs::path& program, const fs::path& home)
{
    return "HOME=" + Quoted(home) + " XDG_CACHE_HOME=" + Quoted(home / "cache") +
           " LD_LIBRARY_PATH=" + Quoted(program.parent_path()) + " " + Quoted(program) + " -f";
}

Commands ArdourForAll(const fs::path& program, const Modules& modules, const fs::path& home)
{
    std::string command = ArdourCommand(program, home);
    for (const std::string& module : modules)
        command += " " + Quoted(module);
    return {command};
}

Commands ArdourForEach(const fs::path& program, const Modules& modules, const fs::path& home)
{
    Commands commands;
    for (const std::string& module : modules)
        commands.push_back(ArdourCommand(program, home) + " " + Quoted(module));
    return commands;
}

Commands Qtractor(const fs::path& program, const Modules& modules, const fs::path& home)
{
    const fs::path list = home / "modules";
    std::ofstream lines(list);
    for (const std::string& module : modules)
        lines << "VST:" << module << "\n";
    return {"HOME=" + Quoted(home) + " " + Quoted(program) + " <" + Quoted(list)};
}

struct KnownPeer
{
    const char* package;
    /// The scanner's file, below a folder of the system's.
    const char* file;
    const char* how;
    Commands (*commands)(const fs::path&, const Modules&, const fs::path&);
    const char* mark;
};
constexpr KnownPeer knownPeers[] = {
    {"ardour", "ardour-vst-scanner", "one process for all files", ArdourForAll, "Found Plugin"},
    {"ardour", "ardour-vst-scanner", "one process for each file", ArdourForEach, "Found Plugin"},
    {"qtractor", "qtractor_plugin_scan", "one process for all files", Qtractor, "\nVST|"},
};

/// In PATH, or in the package's folder below the system's folders of libraries. Empty when it is not there.
fs::path FindScanner(const KnownPeer& peer)
{
    std::vector<fs::path> folders;
    const char* path = std::getenv("PATH");
    std::istringstream parts(path ? path : "");
    for (std::string folder; std::getline(parts, folder, ':');)
        folders.emplace_back(folder);
    std::error_code error;
    for (const char* libraries : {"/usr/lib", "/usr/lib/x86_64-linux-gnu", "/usr/local/lib"})
        for (fs::directory_iterator entries(libraries, error); !error && entries != fs::directory_iterator();
             entries.increment(error))
            if (entries->path().filename().string().starts_with(peer.package))
                folders.push_back(entries->path());
    for (const fs::path& folder : folders)
        if (fs::is_regular_file(folder / peer.file, error))
            return folder / peer.file;
    return {};
}

std::string VersionOf(const std::string& package)
{
    try {
        return CommandOutput("dpkg-query -W -f '${Version}' " + package);
    } catch (const std::runtime_error&) {
        return "of unknown version";
    }
}

} // namespace

std::vector<PeerScanner> FindPeerScanners(const std::string& names)
{
    if (names.find_first_not_of(", ") == names.npos)
        throw std::invalid_argument("--beside names no package. Name some of these, separated by commas: "
                                    "ardour,qtractor");
    std::vector<PeerScanner> found;
    std::istringstream parts(names);
    for (std::string name; std::getline(parts, name, ',');) {
        const std::size_t before = found.size();
        for (const KnownPeer& peer : knownPeers) {
            const fs::path program = name == peer.package ? FindScanner(peer) : fs::path();
            if (!program.empty())
                found.push_back({name, VersionOf(name), peer.how, peer.commands, peer.mark, program});
        }
        if (found.size() == before)
            std::printf("%s: its scanner is not installed, or not known here (ardour, qtractor); leaving it "
                        "out\n",
                        name.c_str());
    }
    return found;
}

PeerTime RunPeer(const PeerScanner& peer, const Modules& modules, const fs::path& home)
{
    fs::create_directories(home);
    const Commands commands = peer.commands(peer.program, modules, home);
    PeerTime time;
    std::string output = "\n";
    time.seconds = Seconds([&] {
        // Some say with their exit status that they could not use a plug-in.
        for (const std::string& command : commands)
            output += CommandOutput("(" + command + " 2>&1; true)");
    });
    const std::string_view mark = peer.mark;
    for (std::size_t at = output.find(mark); at != output.npos; at = output.find(mark, at + 1))
        ++time.found;
    return time;
}

} // namespace bench
