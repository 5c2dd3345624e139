#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/File.h>

/// Trace lines, which have a category and a level. All of it is thread-safe.
///
/// A line is written when its category is enabled and its level is at most the master volume. Categories that
/// nobody configured are on. The environment variable `ZET_TRACE` configures the program at its first use of
/// trace: "volume=N;file=PATH;off=CATEGORY,CATEGORY". Any part may be left out. Without `file`, lines go to
/// standard error.
namespace zetcore::debug {

/// At 0, the default, nothing is traced, at 1 errors only, and at 9 everything.
ZETCORE_API int GetMasterTraceVolume();
ZETCORE_API void SetMasterTraceVolume(int volume);

/// Changes whenever the volume, a category's state or the sink changes. Whoever keeps an answer of
/// `TraceEnabled` asks again then.
ZETCORE_API int TraceChangeCount();

/// True when a line of this category and level would be written. `defaultOn` says whether a category that
/// nobody configured counts as on.
ZETCORE_API bool TraceEnabled(std::string_view category, int level, bool defaultOn);
ZETCORE_API void SetTraceCategoryEnabled(std::string_view category, bool enabled);

/// Writes the text, which brings its own line end, without asking whether it is enabled.
ZETCORE_API void Trace(int level, std::string_view category, std::string_view text);

/// Asks whether the line is enabled, adds "\r\n" and writes it. For code that keeps no answer of
/// `TraceEnabled`.
ZETCORE_API void TraceLine(int level, std::string_view category, std::string_view text);

/// Sends lines to this file, or for an empty path to standard error. Throws `file_exception` when the file
/// cannot be opened.
ZETCORE_API void SetTraceFile(const std::wstring& path);
using TraceSink = std::function<void(int level, std::string_view category, std::string_view text)>;
/// Sets a sink, which takes every line instead, or removes it when the function is empty. Whatever thread
/// traces calls it, several at once, and trace holds no lock then. A call that is under way when the sink is
/// replaced goes on to its end.
ZETCORE_API void SetTraceSink(TraceSink sink);

} // namespace zetcore::debug
