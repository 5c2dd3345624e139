#pragma once

#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include <zetcore/Export.h>

namespace zetcore::debug {

/// Diagnostic switches, which are text entries. Thread-safe.
///
/// The file "DebugDatabase.txt" in the preferences folder holds them: UTF-8, one `key = value` a line, `#`
/// starts a comment line. It is read on first use and again when the preferences folder changes. An entry of
/// the environment variable `ZET_DEBUG_DATABASE` ("key=value;key=value") goes before one of the file, and
/// what `SetEntry` has set goes before both. A malformed line is traced with its number and skipped.
class ZETCORE_API DebugDatabase
{
  public:
    static DebugDatabase& Instance();

    std::string GetEntry(std::string_view key, std::string_view defaultValue);
    /// True when the entry is exactly "true": letter case counts, and "1" is off. Returns the default when
    /// there is no entry.
    bool IsOn(std::string_view key, bool defaultValue);
    void SetEntry(std::string_view key, std::string_view value);
    /// Forgets what `SetEntry` set and what was read, so that the next lookup reads again.
    void Reset();

  private:
    void LoadIfNeeded();

    std::mutex mutex;
    std::wstring loadedFrom;
    bool loaded = false;
    std::map<std::string, std::string, std::less<>> fileEntries;
    std::map<std::string, std::string, std::less<>> environmentEntries;
    std::map<std::string, std::string, std::less<>> ownEntries;
};

} // namespace zetcore::debug
