#pragma once

namespace zetaudiofilterscan {

/// A process as the system sees it now.
struct ProcessStat
{
    /// 'T' stands still, 'Z' has ended and its parent has not asked about it. 0 when there is no such
    /// process.
    char state = 0;
    int parent = 0;
};

ProcessStat StatOf(int process);

} // namespace zetaudiofilterscan
