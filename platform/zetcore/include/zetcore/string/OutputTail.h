#pragma once

#include <string>
#include <string_view>

#include <zetcore/Export.h>

namespace zetcore::string {

/// The end of what a program has written, for telling people why it failed. One thread at a time.
class ZETCORE_API OutputTail
{
  public:
    void Append(std::string_view bytes);
    void Clear() noexcept { tail.clear(); }
    const std::string& Text() const noexcept { return tail; }
    /// The last line with anything on it, as it came.
    std::string LastLine() const;

  private:
    std::string tail;
};

/// Valid UTF-8 in one line without control characters and without blanks at its ends. Of a longer line, the
/// first `maxCharacters` whole characters and "...".
ZETCORE_API std::string TidyLine(std::string_view text, std::size_t maxCharacters);

} // namespace zetcore::string
