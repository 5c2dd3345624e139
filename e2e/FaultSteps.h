#pragma once

#include <string>
#include <vector>

/// The state of the scanner at a step.
enum class Phase
{
    /// The scanner has not been started, or is ending. There is none to kill.
    NoScanner,
    /// When the scanner is killed, the host's scan may not have begun. Then the host reports that it could
    /// not start a scanner.
    BeforeConnection,
    Connected,
    /// The host's main thread has stopped. Until then, the thread that talks to the scanner may have come as
    /// far as the plug-in that crashes the scanner. The scanner is killed if it is there.
    PerhapsConnected,
};

struct Step
{
    const char* place;
    unsigned visit;
    Phase phase = Phase::Connected;
};

/// The steps of a scan with one worker, in their order.
std::vector<Step> StepsInTurn();
/// The steps of a scan with several workers.
std::vector<Step> StepsAhead();
/// A step that only a worker comes to.
bool IsWorkers(const Step& step);
/// The scanner has not told its port yet. When it is killed there, the host waits for the port for a minute.
bool IsBeforePort(const Step& step);
/// The name of a test that does something at the step; made of letters, digits and underscores.
std::string NameOf(const Step& step, int workers, const std::string& victim);
