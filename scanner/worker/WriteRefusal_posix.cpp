#include <array>
#include <cerrno>
#include <cstdint>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <zetcore/filesupport/handles/Descriptor.h>

#include "WorkerPrivileges.h"

namespace zetaudiofilterscan {

using zetcore::filesupport::Descriptor;
using zetcore::utility::Reason;

namespace {

// Landlock's own numbers. The headers of older systems lack the later ones.
constexpr std::uint64_t writeFile = 1U << 1;
constexpr std::uint64_t changeFolders = 0x1FF0; // remove and make folders and all kinds of files
constexpr std::uint64_t moveBetweenFolders = 1U << 13;
constexpr std::uint64_t truncate = 1U << 14;
constexpr std::uint64_t signalsBelow = 1U << 1;

constexpr int firstWithMoving = 2;
constexpr int firstWithTruncation = 3;
constexpr int firstWithSignals = 6;

struct Ruleset
{
    std::uint64_t files = 0;
    std::uint64_t network = 0;
    std::uint64_t scopes = 0;
};

struct __attribute__((packed)) FolderRule
{
    std::uint64_t allowed = 0;
    std::int32_t folder = -1;
};

// Programs write there to be rid of something.
constexpr std::array sinks{"/dev/null", "/dev/zero", "/dev/full"};

std::string LastError()
{
    return std::system_category().message(errno);
}

std::uint64_t RightsToWrite(int version)
{
    return writeFile | changeFolders | (version >= firstWithMoving ? moveBetweenFolders : 0) |
           (version >= firstWithTruncation ? truncate : 0);
}

/// Adds the reason why this one place cannot be written to. The others can.
void Allow(const Descriptor& ruleset, const char* path, std::uint64_t rights, std::string& problems)
{
    constexpr int pathBeneath = 1;
    const Descriptor place(::open(path, O_PATH | O_CLOEXEC));
    struct stat status
    {};
    bool done = place.IsOpen() && ::fstat(place.Get(), &status) == 0;
    if (done && !S_ISDIR(status.st_mode))
        rights &= writeFile | truncate;
    const FolderRule rule{rights, place.Get()};
    done = done && ::syscall(SYS_landlock_add_rule, ruleset.Get(), pathBeneath, &rule, 0) == 0;
    if (!done)
        problems += std::string("; plug-ins cannot write to \"") + path + "\": " + LastError();
}

} // namespace

std::optional<Reason> RefuseWriting(const std::vector<std::string>& except, int version)
{
    if (version <= 0)
        return Reason{"writing to files cannot be refused: this kernel has no Landlock"};
    const std::uint64_t rights = RightsToWrite(version);
    const Ruleset rules{rights, 0, version >= firstWithSignals ? signalsBelow : 0};
    const Descriptor ruleset(
        static_cast<int>(::syscall(SYS_landlock_create_ruleset, &rules, sizeof rules, 0)));
    if (!ruleset.IsOpen())
        return Reason{"writing to files cannot be refused: " + LastError()};
    std::string problems;
    for (const char* sink : sinks)
        Allow(ruleset, sink, rights, problems);
    for (const std::string& path : except)
        Allow(ruleset, path.c_str(), rights, problems);
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        ::syscall(SYS_landlock_restrict_self, ruleset.Get(), 0) != 0)
        return Reason{"writing to files cannot be refused: " + LastError()};
    if (version < firstWithTruncation)
        if (const auto problem = RefuseTruncation())
            problems += "; " + problem->text;
    if (problems.empty())
        return std::nullopt;
    return Reason{"writing to files is refused" + problems};
}

} // namespace zetaudiofilterscan
