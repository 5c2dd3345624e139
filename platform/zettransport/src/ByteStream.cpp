#include <zettransport/ByteStream.h>

namespace zettransport {

ByteStream::~ByteStream() = default;

} // namespace zettransport
