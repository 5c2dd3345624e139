#pragma once

#include <utility>

#include <unistd.h>

namespace zetcore::filesupport {

/// Owns a file descriptor.
class Descriptor
{
  public:
    Descriptor() = default;
    explicit Descriptor(int openDescriptor) noexcept : descriptor(openDescriptor) {}
    Descriptor(Descriptor&& other) noexcept : descriptor(std::exchange(other.descriptor, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(descriptor, other.descriptor);
        return *this;
    }
    ~Descriptor() { Close(); }

    int Get() const noexcept { return descriptor; }
    bool IsOpen() const noexcept { return descriptor >= 0; }
    /// False when the system reports an error of an earlier write only now (network file systems do).
    bool Close() noexcept
    {
        const int closing = std::exchange(descriptor, -1);
        return closing < 0 || ::close(closing) == 0;
    }

  private:
    int descriptor = -1;
};

} // namespace zetcore::filesupport
