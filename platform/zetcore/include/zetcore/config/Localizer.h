#pragma once

#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/File.h>

namespace zetcore::config {

/// Looks up user-visible texts. A key is "$$$/", a path of group names, a key name, "=" and the default text,
/// for example "$$$/AudioPluginManager/Reload=Reload". Keys are UTF-8; lookups are thread-safe.
///
/// A string table is UTF-8 and has one entry a line: `"key without the default"="text"`. In both texts, `\n`,
/// `\t`, `\"` and `\\` are escapes. Empty lines and lines that start with `#` are skipped. A byte-order mark
/// is allowed.
class ZETCORE_API Localizer
{
  public:
    static Localizer& Get();

    /// Returns the table's text. Without an entry it is the key's default text, and a text that is no key
    /// comes back as it is.
    std::string Localize(std::string_view key) const;
    std::wstring LocalizeWide(std::string_view key) const;
    /// Localizes the key and then replaces "@0", "@1" and so on by the arguments. Inserted text is not
    /// expanded again.
    std::string Localize(std::string_view key, const std::vector<std::string>& arguments) const;
    std::wstring LocalizeWide(std::string_view key, const std::vector<std::wstring>& arguments) const;

    /// Replaces the table. A malformed line leaves the old table in place and throws `std::runtime_error`
    /// that names the file and the line. Throws `file_exception` when the file cannot be read.
    void LoadTable(const filesupport::File& file);
    void LoadTableFromText(std::string_view text, const std::string& nameForErrors);
    /// Goes back to the default texts.
    void Reset();

  private:
    mutable std::mutex mutex;
    std::map<std::string, std::string, std::less<>> table;
};

} // namespace zetcore::config
