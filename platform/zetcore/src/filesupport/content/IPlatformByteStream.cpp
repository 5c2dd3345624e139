#include <zetcore/filesupport/content/IPlatformByteStream.h>

namespace zetcore::filesupport {

IPlatformByteStream::~IPlatformByteStream() = default;

} // namespace zetcore::filesupport
