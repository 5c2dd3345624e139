#include <zetcore/debug/faults/FaultPoint.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <mutex>
#include <string>
#include <vector>

#include <zetcore/string/Utf.h>
#include <zetcore/utility/EnvironmentVariable.h>

#include "debug/faults/FaultProcess.h"
#include "debug/faults/FaultSetting.h"
#include "string/TextEntries.h"
#include "utility/Immortal.h"

namespace zetcore::debug {

namespace {

struct Fault
{
    FaultSetting setting;
    unsigned visits = 0;
};

class Faults
{
  public:
    Faults() { Read(); }

    bool AreOn() const { return on.load(std::memory_order_relaxed); }

    /// Counts a visit. Returns the setting that is due, if its action is of the kind asked for. When several
    /// are due, the last one counts.
    std::optional<FaultSetting> Visit(std::string_view place, bool isPoint)
    {
        const std::lock_guard lock(mutex);
        std::optional<FaultSetting> due;
        for (Fault& fault : faults) {
            const bool ends =
                fault.setting.action == FaultAction::Stop || fault.setting.action == FaultAction::Kill;
            if (ends != isPoint || !fault.setting.Matches(place))
                continue;
            ++fault.visits;
            if (ends ? fault.visits == fault.setting.visit : fault.visits >= fault.setting.visit)
                due = fault.setting;
        }
        return due;
    }

    void Read()
    {
        const std::lock_guard lock(mutex);
        faults.clear();
        if (const auto variable = utility::EnvironmentVariable("ZET_FAULT")) {
            const std::string text = string::UTF16to8(*variable);
            for (const std::string_view part : string::SplitText(text, ';')) {
                // This is not traced, because trace has places of its own.
                if (const auto setting = ParseFaultSetting(string::Trim(part)))
                    faults.push_back({*setting});
                else
                    std::fprintf(stderr, "ZET_FAULT: \"%s\" is no PLACE:VISIT:ACTION\n",
                                 std::string(part).c_str());
            }
        }
        on.store(!faults.empty(), std::memory_order_relaxed);
    }

  private:
    std::atomic<bool> on{false};
    std::mutex mutex;
    std::vector<Fault> faults;
};

} // namespace

bool FaultsAreOn()
{
    return utility::Immortal<Faults>().AreOn();
}

void FaultPoint(std::string_view place)
{
    if (!FaultsAreOn())
        return;
    const auto due = utility::Immortal<Faults>().Visit(place, true);
    if (due && due->action == FaultAction::Kill)
        KillOwnProcess();
    if (due)
        AnnounceAndStop(place);
}

std::error_code FaultError(std::string_view place)
{
    if (!FaultsAreOn())
        return {};
    FaultPoint(place);
    const auto due = utility::Immortal<Faults>().Visit(place, false);
    if (due && due->action == FaultAction::NoSpace)
        return std::make_error_code(std::errc::no_space_on_device);
    if (due && due->action == FaultAction::ReadOnly)
        return std::make_error_code(std::errc::read_only_file_system);
    if (due && due->action == FaultAction::Denied)
        return std::make_error_code(std::errc::permission_denied);
    return {};
}

std::chrono::seconds FaultDelay(std::string_view place)
{
    if (!FaultsAreOn())
        return {};
    const auto due = utility::Immortal<Faults>().Visit(place, false);
    return std::chrono::seconds(due && due->action == FaultAction::Late ? due->seconds : 0);
}

void ResetFaults()
{
    utility::Immortal<Faults>().Read();
}

} // namespace zetcore::debug
