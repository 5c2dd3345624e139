#pragma once

#include <stdexcept>

namespace zetaudiofilterscan {

/// The host is gone, which ends the scanner in the middle of an entity.
class ConnectionClosed : public std::runtime_error
{
  public:
    ConnectionClosed() : std::runtime_error("the connection was closed") {}
};

} // namespace zetaudiofilterscan
