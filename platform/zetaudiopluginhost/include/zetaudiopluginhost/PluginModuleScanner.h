#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/Export.h>
#include <zetaudiopluginhost/ScanOutcome.h>

namespace zetaudiopluginhost {

/// One pass over a list of plug-ins: the same engine in the host's own process and in the scanner's.
///
/// made --BeginScan--> at a plug-in --ContinueScan--> at the next ... nothing left --EndScan--> ended
///
/// Unsupported plug-ins, and banned ones that are not due to be tried again, are passed over without being
/// loaded, but count as done like the others, so that every given locator is reported once. Main thread (in
/// the scanner: its one scanning thread).
class ZETAUDIOPLUGINHOST_API PluginModuleScanner
{
  public:
    /// Scans one plug-in that is not passed over. May throw; the exception leaves
    /// `ContinueScan`, which stays at the plug-in.
    using EntityScan = std::function<ScanOutcome(const zetaudiofilterhost::PluginLocator&)>;

    /// With `resultsOnly` the registry is left alone and the results are read with `LastOutcome`; otherwise
    /// each outcome goes into the registry, and a plug-in that misbehaved is banned.
    PluginModuleScanner(const std::vector<zetaudiofilterhost::PluginLocator>& locators,
                        bool disableShellSkipping, bool quickEffectScan, bool resultsOnly);
    ~PluginModuleScanner();
    PluginModuleScanner(const PluginModuleScanner&) = delete;
    PluginModuleScanner& operator=(const PluginModuleScanner&) = delete;

    /// How plug-ins are loaded; in this process unless told otherwise. Before `BeginScan`.
    void SetEntityScan(EntityScan scan);

    void BeginScan();
    /// The plug-in that `ContinueScan` will load next, the text to show right behind its path (its
    /// sub-component in brackets, UTF-8), how many are done and how many there are. False when nothing is
    /// left, and after `EndScan`.
    bool GetCurrentProgressInfo(zetaudiofilterhost::PluginLocator& locator, std::string& statusText,
                                int& progress, int& total);
    /// Scans the current plug-in and moves on. False when the scan is complete.
    bool ContinueScan();
    /// Moves on without having scanned the current plug-in: nothing comes of it. False when the scan is
    /// complete.
    bool PassOverCurrent();
    void EndScan();

    /// The outcome of the plug-in before the current one.
    const ScanOutcome& LastOutcome() const;

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace zetaudiopluginhost
