#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/File.h>

/// Trace lines by category and level. All of it is thread-safe.
///
/// A line is written when its category is enabled and its level is at most the master volume. Categories that
/// nobody configured are on. The environment variable `ZET_TRACE` configures the program at its first use of
/// trace: "volume=N;file=PATH;off=CATEGORY,CATEGORY" (any part may be left out; without `file`, lines go to
/// standard error).
namespace zetcore::debug {

/// 0 (the default) traces nothing; 1 errors only, up to 9 everything.
ZETCORE_API int GetMasterTraceVolume();
ZETCORE_API void SetMasterTraceVolume(int volume);

/// Moves whenever the volume, a category's state or the sink changes: cached answers of `TraceEnabled` are
/// then old.
ZETCORE_API int TraceChangeCount();

/// True when a line of this category and level would be written. `defaultOn` says whether a category that
/// nobody configured counts as on.
ZETCORE_API bool TraceEnabled(std::string_view category, int level, bool defaultOn);
ZETCORE_API void SetTraceCategoryEnabled(std::string_view category, bool enabled);

/// Writes the text as it is (it brings its own line end), without asking whether it is enabled.
ZETCORE_API void Trace(int level, std::string_view category, std::string_view text);

/// Convenience for code that needs no cached answer: asks, adds "\r\n" and writes.
ZETCORE_API void TraceLine(int level, std::string_view category, std::string_view text);

/// Lines go to this file. An empty path means standard error. A file that cannot be opened throws
/// `file_exception`.
ZETCORE_API void SetTraceFile(const std::wstring& path);
using TraceSink = std::function<void(int level, std::string_view category, std::string_view text)>;
/// A sink that takes every line instead; an empty function removes it. It is called by whatever thread
/// traces, by several at once, with no lock of trace's held; a call that is under way when it is replaced
/// goes on to its end.
ZETCORE_API void SetTraceSink(TraceSink sink);
/// Volume, categories and sink as at program start; for tests.
ZETCORE_API void ResetTrace();

} // namespace zetcore::debug
