#pragma once

#include <string>

#include <zetaudiofilterhost/PluginLocator.h>

namespace zetaudiopluginhostui {

/// The file that names the plug-in which is being loaded in this process. After a crash, whom it names is
/// banned, so it must never name another than the one that is being loaded.
class ScanMarker
{
  public:
    enum class State
    {
        Written,
        /// It cannot be written, but none is there: a crash will not be traced to its plug-in.
        Absent,
        /// An older one is there and can be neither replaced nor deleted.
        Stale,
    };

    struct Outcome
    {
        State state = State::Written;
        /// The system's reason (UTF-8) where it is not written.
        std::string problem;
    };

    static Outcome Write(const zetaudiofilterhost::PluginLocator& plugin);
    /// False when it is there and cannot be deleted.
    static bool Delete();
};

} // namespace zetaudiopluginhostui
