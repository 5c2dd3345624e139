#pragma once

namespace zetaudiofilterscan {

/// What a plug-in of a simulated scan does to the worker that loads it.
enum class PluginNature
{
    Good,
    Slow,    // a third of the limit
    Skipped, // known before anything is loaded
    Crashes,
    Hangs,
    Lies,              // its worker's answer is none
    TakesMemory,       // too much of it
    CannotBeUsed,      // its worker says so
    CrashesInCompany,  // while any other worker is at work
    CrashesAfterOther, // when its worker has loaded others
    RefusesWhenHeld,   // while another worker is at one like it, or has one loaded
    HangsWhenHeld,
    LosesDisplayOnce,
    NeedsDisplay,
    NotBegunTwice,
    NeverBegun,
    Flaky,          // fails at first and passes then
    FailsAndPasses, // in turn
    NeedsTwoProcessors,
};
inline constexpr int pluginNatures = static_cast<int>(PluginNature::NeedsTwoProcessors) + 1;

/// Such a plug-in keeps something for itself as long as it is loaded.
constexpr bool Holds(PluginNature nature)
{
    return nature == PluginNature::RefusesWhenHeld || nature == PluginNature::HangsWhenHeld;
}

/// What a scan has to tell its host about a plug-in.
enum class Verdict
{
    Outcome,
    Banned,
    NotScanned,
};

constexpr Verdict RightVerdict(PluginNature nature)
{
    switch (nature) {
    case PluginNature::Crashes:
    case PluginNature::Hangs:
    case PluginNature::Lies:
    case PluginNature::TakesMemory:
    case PluginNature::CannotBeUsed:
    case PluginNature::FailsAndPasses:
        return Verdict::Banned;
    case PluginNature::NeedsDisplay:
    case PluginNature::NeverBegun:
        return Verdict::NotScanned;
    default:
        return Verdict::Outcome;
    }
}

} // namespace zetaudiofilterscan
