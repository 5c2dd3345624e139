#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/ScanOutcome.h>

#include "supervisor/lookahead/CulpritMemory.h"
#include "supervisor/lookahead/LookAhead.h"
#include "supervisor/lookahead/Trials.h"
#include "supervisor/process/Interrupt.h"

namespace zetaudiofilterscan {

class ScanLog;

/// Scans the plug-ins of a list in workers, ahead of what the host asks for: `LookAhead` decides, `Trials`
/// does it. Scanning thread.
class AheadScanner
{
  public:
    using Time = LookAhead::Time;

    /// A list and how it is to be scanned.
    struct Task
    {
        std::vector<zetaudiofilterhost::PluginLocator> locators;
        Trials::Terms terms;
        /// Is called once, before the first plug-in is looked at that the scanner before this one has not
        /// blamed. Empty when there is nothing to prepare.
        std::function<void()> beforeFirstLook;
        /// From 1 to `zetscanprotocol::mostWorkers`.
        std::size_t workers = 1;
    };

    AheadScanner();
    ~AheadScanner();
    AheadScanner(const AheadScanner&) = delete;
    AheadScanner& operator=(const AheadScanner&) = delete;

    /// Starts a worker, so that it is there when it is needed.
    void StartAhead();
    /// Ends what is under way, and starts over with this task. The log and the memory must outlive this
    /// object, or the next call.
    void Begin(Task newTask, ScanLog& scanLog, const CulpritMemory& culpritMemory);

    /// Takes what the workers have done, and gives them more to do. To be called before each wait.
    void Work();
    /// Waits until there is work, the interrupt is set, or `until`.
    void Wait(const Interrupt& interrupt, Time until);

    struct Announcement
    {
        LookAhead::Announcement::Kind kind;
        zetaudiofilterhost::PluginLocator locator;
        std::size_t done = 0;
    };
    /// The following are about the list that has begun, and answer as in `LookAhead`.
    std::optional<Announcement> AnnounceNext();
    bool IsWaitOver() const { return ahead->IsWaitOver(); }
    /// Throws `PluginFailed`. When no worker could be had, or the plug-in ended with the display that it
    /// talked to, the record says so, with the status `Unscanned`: an error instead would end the host's
    /// chain of requests.
    std::optional<zetaudiopluginhost::ScanOutcome> TakeAnswer();

    /// Kills the workers and all of their groups.
    void KillWorkers();
    /// The scan goes on in another scanner because of the plug-in of the last announcement. That scanner
    /// learns of the other culprits.
    void LeaveCulprits() const;

  private:
    void Act();
    void Tell(Trials::Event& event);
    void GiveSignOfLife();
    void ReadAheadOf(LookAhead::Entity entity);
    void WriteNotes();
    zetaudiopluginhost::ScanOutcome NotScanned(const std::string& reason) const;
    zetaudiopluginhost::BanInfo BanOf(const LookAhead::Culprit& culprit) const;
    std::string NameOf(LookAhead::Entity entity) const;
    std::vector<zetaudiofilterhost::PluginLocator>
    LocatorsOf(const std::vector<LookAhead::Entity>& entities) const;

    Task task;
    ScanLog* log = nullptr;
    const CulpritMemory* memory = nullptr;
    Trials trials;
    std::optional<LookAhead> ahead;
    /// Of each entity's file when a trial of it began last.
    std::vector<zetaudiofilterhost::ModuleFileStamp> stamps;
    LookAhead::Entity announced = 0;
    Time nextSignOfLife{};
    /// The system has been asked for the files of all entities before this one.
    std::size_t readUntil = 0;
};

} // namespace zetaudiofilterscan
