#include "PluginHome.h"

#include <array>
#include <cstdlib>
#include <optional>
#include <string_view>

#include <unistd.h>

#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/ParseNumber.h>

namespace zetaudiofilterscan {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view namePrefix = "zetaudiofilterscan-home-";

/// A folder of the user's that has a variable of its own.
struct UserFolder
{
    const char* variable;
    const char* inHome;
    const char* ours;
};
constexpr std::array userFolders{UserFolder{"XDG_CONFIG_HOME", ".config", "config"},
                                 UserFolder{"XDG_CACHE_HOME", ".cache", "cache"},
                                 UserFolder{"XDG_DATA_HOME", ".local/share", "data"},
                                 UserFolder{"XDG_STATE_HOME", ".local/state", "state"}};

std::optional<fs::path> FolderOf(const char* variable)
{
    const char* const value = std::getenv(variable);
    if (!value || *value != '/')
        return std::nullopt;
    return value;
}

fs::path RuntimeFolder()
{
    return zetcore::filesupport::ToNativePath(zetcore::filesupport::commondirs::RuntimeDir().FullPath());
}

/// Makes the folder, with a link to each entry of the other one. Entries that are there already stay.
void MakeView(const fs::path& folder, const fs::path& of)
{
    fs::create_directories(folder);
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(of, ignored))
        fs::create_symlink(entry.path(), folder / entry.path().filename(), ignored);
}

} // namespace

fs::path PluginHomePath(std::uint64_t supervisor)
{
    return RuntimeFolder() / (std::string(namePrefix) + std::to_string(supervisor));
}

void MakePluginHome(const fs::path& home)
{
    RemovePluginHome(home);
    fs::create_directory(home);
    fs::permissions(home, fs::perms::owner_all);
    fs::create_directory(home / "tmp");
    const std::optional<fs::path> usersHome = FolderOf("HOME");
    for (const UserFolder& each : userFolders) {
        if (const auto own = FolderOf(each.variable))
            MakeView(home / each.ours, *own);
        if (usersHome)
            MakeView(home / "home" / each.inHome, *usersHome / each.inHome);
    }
    if (usersHome) {
        MakeView(home / "home" / ".local", *usersHome / ".local");
        MakeView(home / "home", *usersHome);
    }
}

void RemovePluginHome(const fs::path& home) noexcept
{
    std::error_code ignored;
    fs::remove_all(home, ignored);
}

void RemoveAbandonedPluginHomes() noexcept
try {
    for (const fs::directory_entry& entry : fs::directory_iterator(RuntimeFolder())) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with(namePrefix))
            continue;
        const auto supervisor =
            zetcore::string::ParseNumber<std::uint64_t>(std::string_view(name).substr(namePrefix.size()));
        if (supervisor && !fs::exists("/proc/" + std::to_string(*supervisor)))
            RemovePluginHome(entry.path());
    }
} catch (const std::exception&) {
    // The next scanner finds them, too.
}

std::vector<std::pair<std::string, std::string>> PluginHomeVariables(const fs::path& home)
{
    const std::string temporary = home / "tmp";
    std::vector<std::pair<std::string, std::string>> variables{
        {"TMPDIR", temporary}, {"TMP", temporary}, {"TEMP", temporary}};
    if (FolderOf("HOME"))
        variables.emplace_back("HOME", home / "home");
    for (const UserFolder& each : userFolders)
        if (FolderOf(each.variable))
            variables.emplace_back(each.variable, home / each.ours);
    return variables;
}

} // namespace zetaudiofilterscan
