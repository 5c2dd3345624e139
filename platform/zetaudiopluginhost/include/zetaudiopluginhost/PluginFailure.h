#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include <zetaudiopluginhost/Export.h>
#include <zetcore/config/Localizer.h>

/// Why a plug-in is banned, as facts. Files and messages carry the facts, and they are worded when they are
/// shown, in the language of the one who reads.
namespace zetaudiopluginhost {

/// The step in a plug-in's life at which something happened.
enum class ScanPhase : int
{
    Unknown,
    Load,   ///< the system loads the library and runs its initialisers
    Entry,  ///< its entry function
    Open,   ///< the call that opens what its entry function has made
    Query,  ///< questions about name, vendor, classes, sub-plug-ins
    Create, ///< creating and initialising a component (full effect scan)
    Start,  ///< switching it on and off again (full effect scan)
    Close,  ///< closing what was opened
    Unload, ///< the system unloads the library
};

/// One failure of one plug-in.
struct PluginFailure
{
    /// The texts in brackets are the `details` that a kind has.
    enum class Kind
    {
        Misbehaved, ///< nothing more is known
        Crashed,
        Exited, ///< it ended the process
        TookTooLong,
        TookTooMuchMemory, ///< (the limit in megabytes)
        ChannelLost,       ///< it closed files of the process that had loaded it
        WrongAnswer,       ///< it damaged that process (the mistake in the process's answer)
        CouldNotLoad,      ///< the system did not load it (the system's reason)
        Threw,             ///< it let an exception out (the exception's message, if it has one)
        EndedTheHost,      ///< it was scanned in the host's own process and brought it down
        BannedByUser,
        NoEntryPoint,
        EntryLacksFunctions,
        EntryRefused,
        EntryGaveNothing,
        EntryGaveNoPlugin,
        NoFactory,
        FactoryLacksFunctions,
        NoPlugins,
        NoAudioClass,
        ShellWithoutPlugins,
        EndlessShell,
        UnknownClapVersion, ///< (version)
        NotCreated,
        NotCreatedResult, ///< (the call's result)
        LacksFunctions,
        NotInitialised,
        NotInitialisedResult, ///< (the call's result)
        /// Plug-ins of a library that cannot be used (how many, of how many, the number of the first one, the
        /// version).
        PluginsWithoutDescription,
        PluginsOfUnknownVersion,
        PluginsWithoutId,
        PluginsWithOneId,
        /// (How many are not used, of how many, how many are looked at.)
        TooManyPlugins,
    };
    static constexpr Kind lastKind = Kind::TooManyPlugins;

    Kind kind = Kind::Misbehaved;
    ScanPhase phase = ScanPhase::Unknown;
    /// Crashed: the signal, or the exception on Windows. Exited: the exit code.
    std::int64_t code = 0;
    /// TookTooLong: the limit.
    std::chrono::milliseconds limit{0};
    /// UTF-8: numbers, versions, and words of the system's or the plug-in's.
    std::vector<std::string> details = {};
    /// The last line that it wrote before it failed; UTF-8.
    std::string lastOutput = {};

    friend bool operator==(const PluginFailure&, const PluginFailure&) = default;
};

/// One failure; or two of a flaky plug-in that passed in between; or none when no facts are known.
using PluginFailures = std::vector<PluginFailure>;

/// "crashed (segmentation fault) while being loaded; its last output: out of memory", in the language of the
/// table. UTF-8, one line, made to follow the plug-in's name. Empty without a failure.
ZETAUDIOPLUGINHOST_API std::string WordFailures(const PluginFailures& failures,
                                                const zetcore::config::Localizer& language);
/// The same in English, for files, logs and traces.
ZETAUDIOPLUGINHOST_API std::string WordFailures(const PluginFailures& failures);

} // namespace zetaudiopluginhost
