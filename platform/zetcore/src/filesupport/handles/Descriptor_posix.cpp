#include <zetcore/filesupport/handles/Descriptor.h>

#include <unistd.h>

namespace zetcore::filesupport {

bool Descriptor::Close() noexcept
{
    const int closing = Release();
    return closing < 0 || ::close(closing) == 0;
}

} // namespace zetcore::filesupport
