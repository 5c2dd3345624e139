#pragma once

#include <ostream>
#include <vector>

namespace zetaudiofilterscan {

/// A plug-in that takes its process down or uses its time up, and what the scanner says of it.
struct BadPluginReason
{
    const char* plugin;
    /// How the recorded reason begins.
    const char* reason;
    /// Short only for those that use it up: a busy machine must not make others do so.
    int secondsLimit = 50;
};

inline std::ostream& operator<<(std::ostream& stream, const BadPluginReason& bad)
{
    return stream << bad.plugin;
}

/// The reasons in this system's words.
std::vector<BadPluginReason> BadPluginReasons();

/// They fail when all questions are answered, and the system's loader catches it: they are not banned.
std::vector<const char*> PluginsThatTheLoaderStops();

/// A module's title with a quotation mark in it, of the kind that this system allows.
const char* QuotedFileName();

} // namespace zetaudiofilterscan
