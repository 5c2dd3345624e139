#include "HeapUse.h"

#include <malloc.h>

namespace bench {

std::size_t HeapUse()
{
    const struct mallinfo2 info = mallinfo2();
    // Large blocks have mappings of their own and are counted separately.
    return info.uordblks + info.hblkhd;
}

} // namespace bench
