#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/filesupport/sharing/MemoryMappedFile.h>
#include <zetcore/serialization/Value.h>
#include <zetscanprotocol/ScanInfo.h>
#include <zetscanprotocol/ScanRequests.h>
#include <zettesting/ChildProcess.h>

namespace zetaudiofilterscan {

/// The reply to a request, or the end of the connection.
struct Reply
{
    /// The connection was closed before an answer came.
    bool closed = false;
    /// Null for an error.
    std::shared_ptr<zetcore::serialization::Value> result;
    int errorCode = 0;
    std::wstring errorMessage;

    bool Succeeded() const { return result != nullptr; }
};

/// A host for tests: starts the real scanner and talks to it over a real connection. Waits at most a minute
/// for anything. One thread at a time.
class ScannerClient
{
  public:
    using Environment = std::map<std::string, std::optional<std::string>>;

    /// Starts it, as a host does, and waits for its port. `prefs` is where the settings files are.
    explicit ScannerClient(std::filesystem::path prefs, Environment environment = {}, int traceVolume = 0);
    ~ScannerClient();
    ScannerClient(const ScannerClient&) = delete;
    ScannerClient& operator=(const ScannerClient&) = delete;

    static std::filesystem::path Program();

    std::uint16_t Port() const noexcept { return port; }
    std::filesystem::path SettingsPath() const { return prefs / "plugins.xml"; }
    std::filesystem::path BannedPath() const { return BannedPath(prefs); }
    static std::filesystem::path BannedPath(const std::filesystem::path& prefs);
    std::filesystem::path PermanentBannedPath() const;
    std::filesystem::path ResultPath() const { return prefs / "plugins.xml.scan"; }

    /// Opens the connection; false when it cannot be opened.
    bool Open();
    /// Closes it from this side.
    void Close();
    /// Sends a request and waits for the reply.
    Reply Call(const zetcore::serialization::Call& call);
    /// Sends a request and does not wait.
    void Send(const zetcore::serialization::Call& call);
    /// Waits until the other side has closed; false when it has not within a minute.
    bool WaitForClose();

    zetscanprotocol::ConnectArguments ConnectArguments(bool disableShellSkipping = false,
                                                       bool quick = true) const;
    Reply Connect(bool disableShellSkipping = false, bool quick = true);
    Reply BeginScan(const std::vector<zetaudiofilterhost::PluginLocator>& locators);
    /// Throws when the reply is not what it must be.
    zetscanprotocol::ScanInfo GetScanInfo();
    Reply ScanOneEntity();
    /// Open, connect and begin.
    void StartScan(const std::vector<zetaudiofilterhost::PluginLocator>& locators);

    zettesting::ChildProcess& Process() noexcept { return *process; }

  private:
    struct Conversation;

    std::filesystem::path prefs;
    zetcore::filesupport::MemoryMappedFile block;
    std::unique_ptr<zettesting::ChildProcess> process;
    std::unique_ptr<Conversation> conversation;
    std::uint16_t port = 0;
};

/// The results of a whole scan, with a new scanner after each one that died, as hosts do it.
struct WholeScan
{
    /// The reported locators, in order.
    std::vector<zetaudiofilterhost::PluginLocator> reported;
    /// The result files' records.
    std::string results;
    /// Why, by the module's path.
    std::map<std::wstring, std::string> failed;
    int scannersStarted = 0;
};

WholeScan ScanAll(const std::filesystem::path& prefs,
                  const std::vector<zetaudiofilterhost::PluginLocator>& locators,
                  const ScannerClient::Environment& environment = {});

/// The extension tells the technology.
zetaudiofilterhost::PluginLocator LocatorOf(const std::filesystem::path& module);

} // namespace zetaudiofilterscan
