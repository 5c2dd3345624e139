#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include <zetcore/Export.h>

namespace zetcore::filesupport {

/// A small block of memory that processes of one user share by its name. It is a file of mode 0600 in
/// `commondirs::RuntimeDir()`, or `Local\<name>` on Windows.
///
/// With `CreateLocked`, the file carries an exclusive lock from `Init` until `CloseFileHandleIfPossible`, so
/// that two programs that start a server at the same moment do not read each other's block. The mapping
/// itself stays readable and writable until the object is destroyed or `Init` is called again. One thread at
/// a time.
class ZETCORE_API MemoryMappedFile
{
  public:
    enum Flags : int
    {
        Read = 1,
        Write = 8,
        Create = 16,
        /// The side that starts the server uses this: it creates or opens the block, and holds the lock.
        CreateLocked = Read | Write | Create,
        /// The server uses this: it opens an existing block, without the lock.
        OpenShared = Read | Write,
    };

    MemoryMappedFile();
    ~MemoryMappedFile();
    MemoryMappedFile(const MemoryMappedFile&) = delete;
    MemoryMappedFile& operator=(const MemoryMappedFile&) = delete;

    /// Maps `size` bytes, which are zero in a new block. `CreateLocked` waits for the lock for at most 120
    /// seconds. Returns false when the block cannot be had, is another user's, or is smaller; the cause is
    /// traced.
    bool Init(const std::string& name, std::size_t size, int flags);
    /// The block's first byte, which is aligned to a page. Null before a successful `Init`.
    void* GetAddress() const noexcept;
    /// Gives up the lock and the handle. The mapping stays.
    void CloseFileHandleIfPossible();

  private:
    struct Mapping;
    std::unique_ptr<Mapping> mapping;
};

} // namespace zetcore::filesupport
