#include <zetcore/filesupport/IPlatformByteStream.h>

namespace zetcore::filesupport {

IPlatformByteStream::~IPlatformByteStream() = default;

} // namespace zetcore::filesupport
