#pragma once

#include <algorithm>

namespace zetui::dialogs {

/// How full a progress bar is, from 0 to 1. It never goes back, whatever the counts do.
class BarPosition
{
  public:
    /// A total of 0 leaves the position as it is.
    void Move(unsigned long long progress, unsigned long long total)
    {
        if (total > 0)
            part = std::max(part, std::min(1.0, static_cast<double>(progress) / static_cast<double>(total)));
    }
    void Fill() { part = 1.0; }
    double Part() const { return part; }
    bool IsFull() const { return part >= 1.0; }

  private:
    double part = 0.0;
};

} // namespace zetui::dialogs
