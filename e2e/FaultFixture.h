#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ManagerFixture.h"

/// One process of the host's or the scanner's, as the system shows it.
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

/// Host and scanner with faults set in them: see zetcore/debug/faults/FaultPoint.h.
class FaultFixture : public ManagerFixture
{
  protected:
    /// Where a process stopped.
    struct Stop
    {
        std::string place;
        int process = 0;
    };

    FaultFixture();
    ~FaultFixture() override;

    /// The next processes that are started stop at the place's visit, the first of them that gets there.
    void StopAt(const std::string& place, unsigned visit);
    /// More faults, as the environment variable takes them.
    void AddFault(const std::string& fault);
    void WithoutFaults();
    /// Waits until one has stopped; nothing when the host ends before that.
    std::optional<Stop> WaitForStop() const;
    void Continue(const Stop& stop) const;

    /// Those of this test that run or have not been collected.
    std::vector<SeenProcess> Processes() const;
    std::vector<int> Numbers(SeenProcess::Kind kind) const;
    /// Looked for again for a while: on a busy machine, a look at the process table misses one now and then.
    std::vector<int> AwaitNumbers(SeenProcess::Kind kind) const;
    static void KillAll(const std::vector<int>& numbers);
    /// Whether any of the preferences files was damaged: such files are kept aside.
    std::vector<std::string> DamagedFiles() const;

  private:
    class Pipe;
    std::unique_ptr<Pipe> pipe;
};
