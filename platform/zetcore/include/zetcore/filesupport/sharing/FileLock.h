#pragma once

#include <chrono>
#include <memory>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/File.h>

namespace zetcore::filesupport {

/// A lock that a program holds while it reads, changes and replaces a file. The programs of one user that do
/// so come one after the other.
///
/// The lock is a small file of its own in the runtime folder, and its name is made from the path as it is
/// written. The system gives the lock up when the process ends, however it ends. It does not nest. Any
/// thread.
class ZETCORE_API FileLock
{
  public:
    static constexpr std::chrono::seconds defaultLimit{5};

    /// Waits for the program that holds it. When the time is up, or there can be no lock, this is traced and
    /// the caller goes on without one: what it has to save is worth more than the order.
    explicit FileLock(const File& file, std::chrono::milliseconds limit = defaultLimit);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    bool IsHeld() const noexcept { return held != nullptr; }

  private:
    struct Held;
    std::unique_ptr<Held> held;
};

} // namespace zetcore::filesupport
