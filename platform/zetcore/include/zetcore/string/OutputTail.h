#pragma once

#include <string>
#include <string_view>

#include <zetcore/Export.h>

namespace zetcore::string {

/// Keeps the end of what a program has written, for telling people why it failed. One thread at a time.
class ZETCORE_API OutputTail
{
  public:
    void Append(std::string_view bytes);
    void Clear() noexcept { tail.clear(); }
    const std::string& Text() const noexcept { return tail; }
    /// Returns the last line that is not blank, as it came.
    std::string LastLine() const;

  private:
    std::string tail;
};

/// Makes one line of valid UTF-8, without control characters and without blanks at its ends. A longer line is
/// cut to its first `maxCharacters` characters and gets "..." behind them.
ZETCORE_API std::string TidyLine(std::string_view text, std::size_t maxCharacters);

} // namespace zetcore::string
