#pragma once

#include <utility>

#include <zetcore/Export.h>

namespace zetcore::filesupport {

/// Owns a file descriptor of a POSIX system; -1 is none.
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
    /// The caller owns it from now on.
    int Release() noexcept { return std::exchange(descriptor, -1); }
    /// False when the system reports an error of an earlier write only now (network file systems do).
    ZETCORE_API bool Close() noexcept;

  private:
    int descriptor = -1;
};

} // namespace zetcore::filesupport
