#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zetaudiopluginhost {

/// The list of plug-ins known to be unsupported: a `pluginlist` element of `plugin` elements with `filename`
/// and, optionally, `uniqueid` and `version`. An attribute that is absent matches everything.
class UnsupportedList
{
  public:
    /// Throws `std::runtime_error` ("line 3: why") for a text that is no such list. An entry without a file
    /// name or with a number that is none is left out and traced: it must not match more than was meant.
    static UnsupportedList Parse(std::string_view text);

    /// An entry with no more than a file name matches.
    bool MatchesFile(const std::wstring& fileName) const;
    bool Matches(const std::wstring& fileName, std::uint32_t uniqueId, std::int64_t version) const;

  private:
    struct Entry
    {
        std::wstring fileName;
        std::optional<std::uint32_t> uniqueId;
        std::optional<std::int64_t> version;
    };
    std::vector<Entry> entries;
};

} // namespace zetaudiopluginhost
