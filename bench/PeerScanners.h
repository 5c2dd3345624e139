#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// Another program's scanner, as its distribution package has installed it.
struct PeerScanner
{
    /// The package.
    std::string name;
    std::string version;
    /// How it is run, for people.
    std::string how;
    /// Shell commands, one after the other, that have it scan the modules. `home` is a folder for what it
    /// keeps.
    std::vector<std::string> (*commands)(const std::filesystem::path& program,
                                         const std::vector<std::string>& modules,
                                         const std::filesystem::path& home);
    /// It writes this once for each plug-in that it has found.
    const char* mark;
    std::filesystem::path program;
};

struct PeerTime
{
    double seconds = 0;
    int found = 0;
};

/// The scanners of these packages, separated by commas. Says which of them are not there. Throws
/// `std::invalid_argument` when no package is named.
std::vector<PeerScanner> FindPeerScanners(const std::string& names);

/// Has it scan the modules.
PeerTime RunPeer(const PeerScanner& peer, const std::vector<std::string>& modules,
                 const std::filesystem::path& home);

} // namespace bench
