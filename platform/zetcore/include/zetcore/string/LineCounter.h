#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace zetcore::string {

/// Tells in which line of a text a byte stands; messages need that. A text that is asked about from front to
/// back is gone through only once, however many questions there are. One thread at a time. The text must
/// outlive this object.
class LineCounter
{
  public:
    explicit LineCounter(std::string_view wholeText) : text(wholeText) {}

    /// Lines count from 1. An offset behind the end is in the last line.
    std::size_t LineOf(std::size_t offset)
    {
        offset = std::min(offset, text.size());
        if (offset < counted) {
            counted = 0;
            line = 1;
        }
        const std::string_view between = text.substr(counted, offset - counted);
        line += static_cast<std::size_t>(std::count(between.begin(), between.end(), '\n'));
        counted = offset;
        return line;
    }

  private:
    std::string_view text;
    /// `line` is the line of this offset.
    std::size_t counted = 0;
    std::size_t line = 1;
};

} // namespace zetcore::string
