#pragma once

#include <string_view>
#include <system_error>
#include <utility>

#include <zetcore/Export.h>

namespace zetcore::filesupport {

/// Owns a file descriptor of a POSIX system, or nothing, which is -1.
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
    /// Returns false when the system reports an error of an earlier write only now, as network file systems
    /// do.
    ZETCORE_API bool Close() noexcept;
    /// Writes everything, in several writes where one takes only a part.
    ZETCORE_API std::error_code WriteWhole(std::string_view bytes) const;

  private:
    int descriptor = -1;
};

} // namespace zetcore::filesupport
