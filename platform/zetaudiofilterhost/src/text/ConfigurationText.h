#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiofilterhost/PluginModuleInfo.h>

/// The registry's XML text: the registry file, the scan result, and the changes in the registry's journal.
/// docs/files.md describes it. Here are only texts and values; files are the registry's business.
namespace zetaudiofilterhost {

using Unknown = PluginModuleInfo::Unknown;
using InfoPtr = std::shared_ptr<PluginModuleInfo>;

/// The memory of a record that was removed, until it comes back.
struct RememberedChoice
{
    bool enabled = true;
    Unknown unknown;

    bool IsWorthKeeping() const noexcept { return !enabled || !unknown.IsEmpty(); }
};

struct PluginFolder
{
    std::wstring path;
    Unknown unknown;
};

struct TechnologyFolders
{
    TechnologyType type = TechnologyType::Unknown;
    std::vector<PluginFolder> folders;
    Unknown unknown;
};

/// One locator's state: a record, in the registry or aside, or a choice to remember, or (neither) nothing any
/// more. A record that was put aside by its own locator, not with its whole module, is marked as scanned
/// alone.
struct RegistryChange
{
    PluginLocator locator;
    InfoPtr info;
    std::optional<RememberedChoice> choice;
    bool isAside = false;
};

/// The version of the format that this code writes.
inline constexpr std::string_view configurationVersion = "1.2";

struct Configuration
{
    /// The version of the file that it came from, when that is newer than ours, or else ours.
    std::string version{configurationVersion};
    std::vector<TechnologyFolders> technologies;
    std::vector<InfoPtr> modules;
    std::vector<InfoPtr> asides;
    std::vector<RegistryChange> choices;
    Unknown unknown;
};

/// The text is damaged; the message names the text and the line.
class ConfigurationError : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
    ~ConfigurationError() override;
};

/// The technologies whose records are to be read; empty for all. Elements that name a plug-in of another one
/// are passed over unread, so that what is wrong with them goes unnoticed.
using WantedTechnologies = std::vector<TechnologyType>;

/// Throws `ConfigurationError`. `nameForErrors` is UTF-8, for people.
Configuration ReadConfiguration(std::string_view utf8, const std::string& nameForErrors,
                                const WantedTechnologies& wanted = {});
std::string WriteConfiguration(const Configuration& configuration);

std::vector<RegistryChange> ReadChanges(std::string_view utf8, const std::string& nameForErrors,
                                        const WantedTechnologies& wanted = {});
std::string WriteChanges(const std::vector<RegistryChange>& changes);

/// Between a status and its word in the text.
std::string_view StatusWord(ModuleStatus status);
std::optional<ModuleStatus> StatusFromWord(std::string_view word);

} // namespace zetaudiofilterhost
