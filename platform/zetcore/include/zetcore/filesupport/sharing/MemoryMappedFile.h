#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include <zetcore/Export.h>

namespace zetcore::filesupport {

/// A small block of memory shared by name between processes of one user: a file of mode 0600 in
/// `commondirs::RuntimeDir()`, or `Local\<name>` on Windows.
///
/// The mapping's file handle carries an exclusive lock from `Init` until `CloseFileHandleIfPossible`, when
/// the flags ask for it, so that two programs that start a server at the same moment do not read each other's
/// block. The mapping itself stays readable and writable until the object is destroyed or `Init` is called
/// again. One thread at a time.
class ZETCORE_API MemoryMappedFile
{
  public:
    enum Flags : int
    {
        Read = 1,
        Write = 8,
        Create = 16,
        /// Create or open, read and write, and hold the lock: what the side that starts the server uses.
        CreateLocked = Read | Write | Create,
        /// Open an existing block, read and write, without the lock: what the server uses.
        OpenShared = Read | Write,
    };

    MemoryMappedFile();
    ~MemoryMappedFile();
    MemoryMappedFile(const MemoryMappedFile&) = delete;
    MemoryMappedFile& operator=(const MemoryMappedFile&) = delete;

    /// Maps `size` bytes; a new block is zero. `CreateLocked` waits for the lock for at most 120 seconds.
    /// Returns false (traced with the cause) when the block cannot be had, is another user's, or is smaller.
    bool Init(const std::string& name, std::size_t size, int flags);
    /// The block's first byte, aligned to a page; null before a successful `Init`.
    void* GetAddress() const noexcept;
    /// Gives up the lock and the handle. The mapping stays.
    void CloseFileHandleIfPossible();

  private:
    struct Mapping;
    std::unique_ptr<Mapping> mapping;
};

} // namespace zetcore::filesupport
