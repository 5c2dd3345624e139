#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiofilterhost/PluginModuleInfo.h>
#include <zetcore/serialization/Value.h>
#include <zetscanprotocol/ScanRequests.h>

#include "supervisor/log/ScanLog.h"
#include "supervisor/lookahead/AheadScanner.h"
#include "supervisor/lookahead/CulpritMemory.h"
#include "supervisor/verdicts/PluginFailed.h"

namespace zetaudiofilterscan {

/// Carries out the requests of one host. Scanning thread.
///
/// start --Connect--> connected --BeginScanForPlugins--> has a list
/// has a list --GetScanInfo, continue true--> at a plug-in --ScanOneEntity--> has a list
/// has a list --GetScanInfo, continue false--> has a list (nothing more to scan)
///
/// A plug-in that GetScanInfo names has been scanned already when several workers scan ahead; the host's
/// other plug-ins are not held up by one that takes long. While nothing can be named, GetScanInfo waits for a
/// moment, and then tells in its text, without a locator, for which plug-in the host waits; the ScanOneEntity
/// that follows has no result. An entity without a locator is nobody's fault when the scanner dies of it.
///
/// GetScanInfo may be repeated. BeginScanForPlugins may come at any time after Connect: it starts over with
/// its list. Connect comes once. A request at another time gets the error `OutOfOrder` and changes nothing,
/// as do wrong arguments.
class ScanConversation
{
  public:
    /// `hostProcess` as `HostProcessNumber` gives it.
    ScanConversation(AheadScanner& aheadScanner, std::uint64_t hostProcess);
    ~ScanConversation();
    ScanConversation(const ScanConversation&) = delete;
    ScanConversation& operator=(const ScanConversation&) = delete;

    /// Takes up a request; the one before has been answered. Throws `zetmarshal::RPCError` for an error
    /// reply.
    void Take(const std::string& method, const zetcore::serialization::Array& params);
    /// The value of the reply to it. Empty while that is not known: ask again when the workers have got on.
    /// Throws `PluginFailed`, and then there is no reply.
    std::optional<zetcore::serialization::ValuePtr> Reply();

    /// Leaves the reason where the host looks for it, and what else is known for the scanner that follows. A
    /// failure of that is traced.
    void RecordFailure(const PluginFailed& failure);
    /// The host is gone, and with it the scan.
    void Abandon();

  private:
    void Connect(zetscanprotocol::ConnectArguments arguments);
    void BeginScan(const std::vector<zetaudiofilterhost::PluginLocator>& locators);
    /// Modules that may hold a shell's plug-ins in another format: those of the list, and those that the
    /// registry knows.
    std::vector<zetaudiofilterhost::PluginLocator> FindKnownModules() const;
    std::optional<zetcore::serialization::ValuePtr> GetScanInfo();
    bool ScanOneEntity();
    void WriteResult();
    /// Is called when the host has had its chance: it reads the result file between two requests.
    void LookWhetherResultWasRead();

    AheadScanner& scanner;
    const std::uint64_t hostProcess;
    enum class Asked
    {
        /// Something that is done.
        Done,
        WhatIsNext,
        ToScan,
    };
    Asked asked = Asked::Done;
    std::optional<zetscanprotocol::ConnectArguments> connected;
    std::unique_ptr<ScanLog> log;
    std::chrono::milliseconds entityLimit{0};
    std::unique_ptr<CulpritMemory> memory;
    bool hasList = false;
    /// The lists of banned and unsupported plug-ins, which are loaded when the first plug-in is looked at.
    bool hasBannedLists = false;
    std::int32_t total = 0;
    /// How many plug-ins the host has been told of.
    std::int32_t done = 0;
    /// The modules of the list that may hold a shell's plug-ins in another format.
    std::vector<zetaudiofilterhost::PluginLocator> replacing;
    /// The subject of the ScanOneEntity that may come.
    enum class Round
    {
        None,
        /// The plug-in that was named.
        Plugin,
        /// Nothing; the host waits for a plug-in.
        Wait,
        /// Records that the host may not have read.
        Delivery,
    };
    Round round = Round::None;

    /// A record that was found and perhaps not read yet. A second host with the same preferences may delete
    /// or replace the result file before the first has read it. Then there is another round, without a
    /// locator, before the next plug-in. When the file is gone there is only one such round, because a host
    /// may delete what it has read.
    struct Unread
    {
        std::shared_ptr<zetaudiofilterhost::PluginModuleInfo> info;
        int writes = 0;
        int timesGone = 0;
    };
    std::vector<Unread> unread;
    std::string lastResult;
    std::uint64_t resultNumber = 0;
    bool resultIsOut = false;
    int extraRounds = 0;
};

} // namespace zetaudiofilterscan
