#include <zettesting/Emulation.h>

namespace zettesting {

bool IsWine()
{
    return false;
}

} // namespace zettesting
