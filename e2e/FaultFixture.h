#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ManagerFixture.h"

/// A process of the host or the scanner, as the system shows it.
struct SeenProcess
{
    int number = 0;
    int parent = 0;
    /// "R", "S", "T" (stopped), "Z" and so on.
    char state = '?';
    enum class Kind
    {
        Host,
        Supervisor,
        Worker,
        Other,
    } kind = Kind::Other;
};

/// Runs host and scanner with faults at named places: see zetcore/debug/faults/FaultPoint.h.
class FaultFixture : public ManagerFixture
{
  protected:
    /// The place at which a process stopped.
    struct Stop
    {
        std::string place;
        int process = 0;
    };

    FaultFixture();
    ~FaultFixture() override;

    /// Among the processes that are started next, the first one that comes to this visit of the place stops
    /// there.
    void StopAt(const std::string& place, unsigned visit);
    /// Adds a fault, written as in the environment variable.
    void AddFault(const std::string& fault);
    void WithoutFaults();
    /// Waits until a process has stopped. Empty when the host ends before that.
    std::optional<Stop> WaitForStop() const;
    void Continue(const Stop& stop) const;

    /// The processes of this test that run, or that have ended and are not collected.
    std::vector<SeenProcess> Processes() const;
    std::vector<int> Numbers(SeenProcess::Kind kind) const;
    /// Looks several times: on a busy machine, a single look at the process table may miss a process.
    std::vector<int> AwaitNumbers(SeenProcess::Kind kind) const;
    static void KillAll(const std::vector<int>& numbers);
    /// The damaged preferences files, which are kept aside.
    std::vector<std::string> DamagedFiles() const;

  private:
    class Pipe;
    std::unique_ptr<Pipe> pipe;
};
