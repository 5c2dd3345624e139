#pragma once

#include <array>
#include <string>
#include <string_view>

#include <windows.h>

#include "supervisor/workers/SpawnedWorker_win.h"

namespace zetaudiofilterscan {

/// Our end of a pipe, read (and written) without waiting: a read is always under way, and the events tell
/// when there is something to do. The system writes into this object while an operation is under way, so it
/// stays where it is, and its destructor waits for the operations to be cancelled.
class OverlappedPipe
{
  public:
    explicit OverlappedPipe(Handle pipe);
    ~OverlappedPipe();
    OverlappedPipe(const OverlappedPipe&) = delete;
    OverlappedPipe& operator=(const OverlappedPipe&) = delete;

    bool IsOpen() const noexcept { return open; }
    /// Set when `Read` has something to give, or has found the end.
    HANDLE ReadEvent() const noexcept { return readEvent.Get(); }
    bool IsWriting() const noexcept { return writeUnderWay; }
    /// Set when a write has been done.
    HANDLE WriteEvent() const noexcept { return writeEvent.Get(); }

    /// The bytes that have come, at most one buffer, perhaps none. They are valid until the next call.
    std::string_view Read();
    void Write(std::string_view bytes);
    /// Goes on with what could not be written yet.
    void ContinueWriting();

  private:
    void StartRead();

    Handle pipe;
    Handle readEvent;
    Handle writeEvent;
    OVERLAPPED reading = {};
    OVERLAPPED writing = {};
    std::array<char, 65536> buffer{};
    std::array<char, 65536> given{};
    /// The bytes of the write that is under way, and those that follow it.
    std::string beingWritten;
    std::string toWrite;
    bool open = true;
    bool readUnderWay = false;
    bool writeUnderWay = false;
};

} // namespace zetaudiofilterscan
