#pragma once

#include <string>

#include <zetaudiofilterhost/PluginLocator.h>

namespace zetaudiopluginhostui {

/// Writes and deletes the file that names the plug-in which is being loaded in this process. The plug-in that
/// it names is banned after a crash, so it must never name another plug-in than the one that is being loaded.
class ScanMarker
{
  public:
    enum class State
    {
        Written,
        /// The marker could not be written, and no older one is there. Nobody will know which plug-in caused
        /// a crash.
        Absent,
        /// An older marker is there and can be neither replaced nor deleted.
        Stale,
    };

    struct Outcome
    {
        State state = State::Written;
        /// The system's reason (UTF-8), unless the marker was written.
        std::string problem;
    };

    static Outcome Write(const zetaudiofilterhost::PluginLocator& plugin);
    /// False when a marker is there and cannot be deleted.
    static bool Delete();
};

} // namespace zetaudiopluginhostui
