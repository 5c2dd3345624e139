#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>

#include "scan/ScanReport.h"

namespace zetaudiopluginmanager {

/// The result of one plug-in file of a scan.
struct ScanOutcome
{
    enum class Status
    {
        Working,
        Failed,
        Banned,
        Unreadable,
        /// Its file is no plug-in for this system.
        NoPlugin,
        /// It was left out on purpose: it is known not to be supported, or there in a newer format.
        Skipped,
        /// The scan did not reach it.
        NotScanned,
    };

    zetaudiofilterhost::PluginLocator module;
    Status status = Status::Working;
    /// Why it does not work. UTF-8. Empty for one that works, and where the reason is not known.
    std::string reason;
    /// The names of its plug-ins that work.
    std::vector<std::wstring> names;
    /// How many plug-in files have been told, this one included, and how many there are.
    std::size_t done = 0, total = 0;

    friend bool operator==(const ScanOutcome&, const ScanOutcome&) = default;
};

/// Tells each plug-in file of a scan once: when the scan has gone on to the next one, or at the end. Main
/// thread.
class ScanOutcomes
{
  public:
    using Locators = std::vector<zetaudiofilterhost::PluginLocator>;
    using Tell = std::function<void(const ScanOutcome&)>;

    ScanOutcomes(const zetaudiofilterhost::PluginModuleInfoManager& registry,
                 const zetaudiopluginhost::BannedPluginManager& bannedList, const Locators& modules,
                 Tell tell);

    /// The scan has come to this plug-in.
    void Reach(const zetaudiofilterhost::PluginLocator& plugin);
    /// The scan has ended: tells all that have not been told.
    void End(const ScanReport& report);

  private:
    ScanOutcome OutcomeOf(const zetaudiofilterhost::PluginLocator& module) const;
    void TellOne(ScanOutcome outcome);

    const zetaudiofilterhost::PluginModuleInfoManager& registry;
    const zetaudiopluginhost::BannedPluginManager& bannedList;
    Locators modules;
    std::set<zetaudiofilterhost::PluginLocator> untold;
    std::size_t total;
    Tell tell;
    zetaudiofilterhost::PluginLocator current;
};

} // namespace zetaudiopluginmanager
