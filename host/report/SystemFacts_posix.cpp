#include "report/SystemFacts.h"

#include <algorithm>
#include <cstdint>
#include <sstream>

#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/EnvironmentVariable.h>

namespace zetaudiopluginmanager {

namespace {

/// The distribution's name as `os-release` has it. Empty where there is none.
std::string DistributionName()
{
    constexpr std::string_view key = "PRETTY_NAME=";
    constexpr std::uint64_t largestFile = 64 << 10;
    for (const wchar_t* path : {L"/etc/os-release", L"/usr/lib/os-release"}) {
        try {
            std::istringstream lines(
                zetcore::filesupport::FileUtils::ReadFile(zetcore::filesupport::File(path), largestFile));
            for (std::string line; std::getline(lines, line);) {
                if (!line.starts_with(key))
                    continue;
                line.erase(0, key.size());
                std::erase(line, '"');
                return line;
            }
        } catch (const std::exception&) {
            continue;
        }
    }
    return {};
}

/// The account's entry in the system's list, in which every field may be empty.
struct Account
{
    std::wstring name, realName, home;
};

Account ReadAccount()
{
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr)
        return {};
    const auto text = [](const char* field) { return zetcore::string::UTF8to16(field ? field : ""); };
    Account account{text(entry.pw_name), text(entry.pw_gecos), text(entry.pw_dir)};
    // The name is the first part of the field.
    account.realName.erase(std::min(account.realName.find(L','), account.realName.size()));
    return account;
}

} // namespace

std::string DescribeSystem()
{
    std::string text = DistributionName();
    utsname system{};
    if (::uname(&system) == 0)
        text += (text.empty() ? "" : ", ") + std::string(system.sysname) + " " + system.release + ", " +
                system.machine;
    return text;
}

std::vector<std::wstring> HomeFolders()
{
    std::vector<std::wstring> folders{zetcore::filesupport::commondirs::HomeDir().FullPath(),
                                      zetcore::utility::EnvironmentVariable("HOME").value_or(L""),
                                      ReadAccount().home};
    for (std::size_t index = 0, count = folders.size(); index < count; ++index) {
        std::error_code error;
        const auto resolved =
            zetcore::filesupport::ResolvedPath(zetcore::filesupport::ToNativePath(folders[index]), error);
        if (!error)
            folders.push_back(zetcore::filesupport::FromNativePath(resolved));
    }
    return folders;
}

std::vector<std::wstring> AccountNames()
{
    const Account account = ReadAccount();
    std::vector<std::wstring> names{account.name, account.realName};
    for (const char* variable : {"USER", "LOGNAME", "SUDO_USER"})
        names.push_back(zetcore::utility::EnvironmentVariable(variable).value_or(L""));
    return names;
}

} // namespace zetaudiopluginmanager
