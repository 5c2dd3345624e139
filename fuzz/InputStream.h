#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>

#include <zettransport/ByteStream.h>

namespace zetfuzz {

/// A stream without threads. `Run` delivers the bytes that were put into it, and runs the tasks that were
/// posted.
class InputStream final : public zettransport::ByteStream
{
  public:
    void Start(BytesHandler bytes, ClosedHandler) override { deliver = std::move(bytes); }
    void Write(std::string bytes) override { written += bytes; }
    void Close() override { closed = true; }
    void Post(std::function<void()> call) override { posted.push_back(std::move(call)); }

    void Put(std::string bytes)
    {
        Post([this, bytes = std::move(bytes)] {
            if (!closed)
                deliver(bytes);
        });
    }
    void Run()
    {
        while (!posted.empty()) {
            const std::function<void()> call = std::move(posted.front());
            posted.pop_front();
            call();
        }
    }

    std::string written;
    bool closed = false;

  private:
    BytesHandler deliver;
    std::deque<std::function<void()>> posted;
};

} // namespace zetfuzz
