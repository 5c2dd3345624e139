#include <zettransport/MemoryStream.h>

#include <mutex>
#include <stdexcept>

#include "TaskThread.h"

namespace zettransport {

namespace {

class MemoryStream final : public ByteStream, public std::enable_shared_from_this<MemoryStream>
{
  public:
    explicit MemoryStream(std::shared_ptr<TaskThread> taskThread) : thread(std::move(taskThread)) {}
    ~MemoryStream() override { Close(); }

    /// Call this before anything else.
    void Join(const std::shared_ptr<MemoryStream>& otherEnd) { other = otherEnd; }

    void Start(BytesHandler bytes, ClosedHandler closedHandler) override
    {
        {
            const std::lock_guard lock(mutex);
            if (closed)
                return;
            if (handlers)
                throw std::logic_error("the stream has been started already");
            handlers = std::make_shared<const Handlers>(Handlers{std::move(bytes), std::move(closedHandler)});
        }
        thread->Post([weak = weak_from_this()] {
            if (const auto self = weak.lock())
                self->Begin();
        });
    }

    void Write(std::string bytes) override
    {
        {
            const std::lock_guard lock(mutex);
            if (closed)
                return;
        }
        thread->Post([weak = other, bytes = std::move(bytes)] {
            if (const auto self = weak.lock())
                self->Deliver(bytes);
        });
    }

    void Close() override
    {
        if (!MarkClosed())
            return;
        thread->Post([weak = other] {
            if (const auto self = weak.lock())
                self->OnOtherClosed();
        });
    }

    void Post(std::function<void()> call) override { thread->Post(std::move(call)); }

  private:
    struct Handlers
    {
        BytesHandler bytes;
        ClosedHandler closed;
    };

    /// Takes the handlers away. Null when the stream was closed already.
    std::shared_ptr<const Handlers> TakeHandlers()
    {
        const std::lock_guard lock(mutex);
        if (closed)
            return nullptr;
        closed = true;
        return std::move(handlers);
    }

    bool MarkClosed()
    {
        std::shared_ptr<const Handlers> dropped;
        const std::lock_guard lock(mutex);
        if (closed)
            return false;
        closed = true;
        dropped.swap(handlers);
        return true;
    }

    void Begin()
    {
        std::shared_ptr<const Handlers> current;
        std::string bytes;
        bool ended = false;
        {
            const std::lock_guard lock(mutex);
            delivering = true;
            bytes.swap(early);
            ended = otherClosed;
            current = handlers;
        }
        if (current && !bytes.empty())
            current->bytes(bytes);
        if (ended)
            Finish();
    }

    void Deliver(const std::string& bytes)
    {
        std::shared_ptr<const Handlers> current;
        {
            const std::lock_guard lock(mutex);
            if (closed || otherClosed)
                return;
            if (!delivering) {
                early += bytes;
                return;
            }
            current = handlers;
        }
        current->bytes(bytes);
    }

    void OnOtherClosed()
    {
        {
            const std::lock_guard lock(mutex);
            otherClosed = true;
            if (!delivering)
                return;
        }
        Finish();
    }

    void Finish()
    {
        if (const auto current = TakeHandlers())
            current->closed({});
    }

    const std::shared_ptr<TaskThread> thread;
    std::weak_ptr<MemoryStream> other;

    std::mutex mutex;
    std::shared_ptr<const Handlers> handlers;
    /// The bytes that arrived before the start.
    std::string early;
    bool delivering = false;
    bool closed = false;
    bool otherClosed = false;
};

} // namespace

std::pair<std::shared_ptr<ByteStream>, std::shared_ptr<ByteStream>> CreateMemoryStreamPair()
{
    const auto thread = std::make_shared<TaskThread>();
    auto left = std::make_shared<MemoryStream>(thread);
    auto right = std::make_shared<MemoryStream>(thread);
    left->Join(right);
    right->Join(left);
    return {std::move(left), std::move(right)};
}

} // namespace zettransport
