#include "supervisor/workers/OverlappedPipe_win.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace zetaudiofilterscan {

namespace {

Handle MakeEvent()
{
    Handle event(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!event.IsOpen())
        throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(), "CreateEvent");
    return event;
}

} // namespace

OverlappedPipe::OverlappedPipe(Handle end)
    : pipe(std::move(end)), readEvent(MakeEvent()), writeEvent(MakeEvent())
{
    StartRead();
}

OverlappedPipe::~OverlappedPipe()
{
    ::CancelIoEx(pipe.Get(), nullptr);
    DWORD ignored = 0;
    if (readUnderWay)
        ::GetOverlappedResult(pipe.Get(), &reading, &ignored, TRUE);
    if (writeUnderWay)
        ::GetOverlappedResult(pipe.Get(), &writing, &ignored, TRUE);
}

void OverlappedPipe::StartRead()
{
    reading = {};
    reading.hEvent = readEvent.Get();
    readUnderWay =
        ::ReadFile(pipe.Get(), buffer.data(), static_cast<DWORD>(buffer.size()), nullptr, &reading) ||
        ::GetLastError() == ERROR_IO_PENDING;
    open = readUnderWay;
}

std::string_view OverlappedPipe::Read()
{
    if (!readUnderWay)
        return {};
    DWORD got = 0;
    if (!::GetOverlappedResult(pipe.Get(), &reading, &got, FALSE)) {
        if (::GetLastError() != ERROR_IO_INCOMPLETE) {
            readUnderWay = false;
            open = false;
        }
        return {};
    }
    std::copy_n(buffer.begin(), got, given.begin());
    StartRead();
    return {given.data(), got};
}

void OverlappedPipe::Write(std::string_view bytes)
{
    toWrite += bytes;
    ContinueWriting();
}

void OverlappedPipe::ContinueWriting()
{
    if (writeUnderWay) {
        DWORD written = 0;
        if (!::GetOverlappedResult(pipe.Get(), &writing, &written, FALSE)) {
            if (::GetLastError() == ERROR_IO_INCOMPLETE)
                return;
            written = static_cast<DWORD>(beingWritten.size()); // reading tells that the pipe is broken
        }
        writeUnderWay = false;
        toWrite.insert(0, beingWritten, written, std::string::npos);
    }
    ::ResetEvent(writeEvent.Get());
    beingWritten = std::exchange(toWrite, {});
    if (beingWritten.empty())
        return;
    writing = {};
    writing.hEvent = writeEvent.Get();
    writeUnderWay = ::WriteFile(pipe.Get(), beingWritten.data(), static_cast<DWORD>(beingWritten.size()),
                                nullptr, &writing) ||
                    ::GetLastError() == ERROR_IO_PENDING;
}

} // namespace zetaudiofilterscan
