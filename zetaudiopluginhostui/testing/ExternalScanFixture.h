#pragma once

#include <functional>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "scan/ExternalAudioPluginScan.h"
#include "testing/ScanFixture.h"

namespace zetaudiopluginhostui {

/// Reaches parts that only the session itself may touch.
class ExternalAudioPluginScanAccess
{
  public:
    static ScannerProcess Process(const ExternalAudioPluginScan& scan) { return scan.process; }
    static bool Connected(const ExternalAudioPluginScan& scan) { return scan.connected; }
    /// On another thread than the session's handlers.
    static bool ConnectedNow(ExternalAudioPluginScan& scan)
    {
        const std::lock_guard lock(scan.mutex);
        return scan.connected;
    }
    /// True when another thread would have to wait for it.
    static bool MutexIsHeld(ExternalAudioPluginScan& scan)
    {
        return std::async(std::launch::async,
                          [&scan] {
                              const std::unique_lock lock(scan.mutex, std::try_to_lock);
                              return !lock.owns_lock();
                          })
            .get();
    }
    static void OnServerQuitDone(ExternalAudioPluginScan& scan) { scan.OnServerQuitDone(); }
};

/// One external scan against the fake scanner, and what it reports.
class ExternalScanFixture : public ScanFixture
{
  protected:
    static constexpr char endReport[] = " 1/0";

    ~ExternalScanFixture() override;

    bool Start(const std::vector<PluginLocator>& plugins, bool disableShellSkipping = false,
               bool quickScan = true);
    /// Runs posted calls until the end has been reported.
    void RunUntilEnd();
    int EndReports() const;

    std::wstring Settings() const { return zettesting::ToWide(prefs / "plugins.xml"); }
    std::filesystem::path BannedFile() const { return prefs / "banned.xml"; }
    std::filesystem::path ResultFile() const { return prefs / "plugins.xml.scan"; }

    /// "FILE NAME[:sub-component] PROGRESS/TOTAL".
    std::vector<std::string> reports;
    /// Called after each.
    std::function<void()> onReport;
    std::wstring banned = zettesting::ToWide(BannedFile());
    std::shared_ptr<ExternalAudioPluginScan> scan = std::make_shared<ExternalAudioPluginScan>();
};

} // namespace zetaudiopluginhostui
