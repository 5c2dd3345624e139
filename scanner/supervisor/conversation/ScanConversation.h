#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/PluginModuleScanner.h>
#include <zetcore/serialization/Value.h>
#include <zetscanprotocol/ScanRequests.h>

#include "supervisor/log/ScanLog.h"
#include "supervisor/verdicts/EntityScanner.h"
#include "supervisor/verdicts/PluginFailed.h"

namespace zetaudiofilterscan {

/// Carries out the requests of one host. Scanning thread.
///
/// start --Connect--> connected --BeginScanForPlugins--> has a list
/// has a list --GetScanInfo, continue true--> at a plug-in --ScanOneEntity--> has a list
/// has a list --GetScanInfo, continue false--> has a list (nothing more to scan)
///
/// GetScanInfo may be repeated. BeginScanForPlugins may come at any time after Connect: it starts over with
/// its list. Connect comes once. A request at another time gets the error `OutOfOrder` and changes nothing,
/// as do wrong arguments.
class ScanConversation
{
  public:
    explicit ScanConversation(EntityScanner& entityScanner);
    ~ScanConversation();
    ScanConversation(const ScanConversation&) = delete;
    ScanConversation& operator=(const ScanConversation&) = delete;

    /// The reply's value. Throws `zetmarshal::RPCError` for an error reply, and what `EntityScanner::Scan`
    /// throws.
    zetcore::serialization::ValuePtr Handle(const std::string& method,
                                            const zetcore::serialization::Array& params);

    /// Leaves the reason where the host looks for it. A failure of that is traced.
    void RecordFailure(const PluginFailed& failure);

  private:
    void Connect(zetscanprotocol::ConnectArguments arguments);
    void BeginScan(const std::vector<zetaudiofilterhost::PluginLocator>& locators);
    /// Modules that may hold a shell's plug-ins in another format: those of the list, and those that the
    /// registry knows.
    std::vector<zetaudiofilterhost::PluginLocator> FindKnownModules() const;
    zetcore::serialization::ValuePtr GetScanInfo();
    void ScanOneEntity();
    void WriteResult();
    /// Is called when the host has had its chance: it reads the result file between two requests.
    void LookWhetherResultWasRead();

    EntityScanner& entityScanner;
    std::optional<zetscanprotocol::ConnectArguments> connected;
    std::unique_ptr<ScanLog> log;
    std::chrono::milliseconds entityLimit{0};
    std::unique_ptr<zetaudiopluginhost::PluginModuleScanner> engine;
    std::int32_t total = 0;
    /// The modules of the list that may hold a shell's plug-ins in another format.
    std::vector<zetaudiofilterhost::PluginLocator> replacing;
    bool atPlugin = false;

    /// A record that was found and perhaps not read yet. A second host with the same preferences may delete
    /// or replace the result file before the first has read it. Then there is another round, without a
    /// locator, before the next plug-in. When the file is gone there is only one such round, because a host
    /// may delete what it has read.
    struct Unread
    {
        std::shared_ptr<zetaudiofilterhost::PluginModuleInfo> info;
        int writes = 0;
    };
    std::vector<Unread> unread;
    std::string lastResult;
    std::uint64_t resultNumber = 0;
    bool resultIsOut = false;
    bool onlyDelivers = false;
    int extraRounds = 0;
};

} // namespace zetaudiofilterscan
