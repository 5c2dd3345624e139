#pragma once

#include <functional>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "scan/session/ExternalAudioPluginScan.h"
#include "testing/ScanFixture.h"

namespace zetaudiopluginhostui {

/// Reaches parts that only the session itself may touch.
class ExternalAudioPluginScanAccess
{
  public:
    static ScannerProcess Process(const ExternalAudioPluginScan& scan) { return scan.process; }
    static bool Connected(const ExternalAudioPluginScan& scan) { return scan.connected; }
    /// The same while handlers may run on other threads.
    static bool ConnectedNow(ExternalAudioPluginScan& scan)
    {
        const std::lock_guard lock(scan.mutex);
        return scan.connected;
    }
    /// True when another thread would have to wait for the mutex.
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

/// Runs one external scan with the fake scanner, and keeps what it reports.
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

    /// The reports, each as "FILE NAME[:sub-component] PROGRESS/TOTAL".
    std::vector<std::string> reports;
    /// Called after each report.
    std::function<void()> onReport;
    std::wstring banned = zettesting::ToWide(BannedFile());
    std::shared_ptr<ExternalAudioPluginScan> scan = std::make_shared<ExternalAudioPluginScan>();
};

} // namespace zetaudiopluginhostui
