#include <zettransport/Session.h>

#include <optional>
#include <stdexcept>
#include <utility>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/handles/SystemError.h>

#include "FrameReader.h"
#include "TraceCategory.h"

namespace zettransport {

struct Session::State
{
    explicit State(std::shared_ptr<ByteStream> bytes) : stream(std::move(bytes)) {}

    static void OnBytes(Session& session, std::string_view bytes);
    static void OnStreamClosed(Session& session, std::error_code error);
    /// False when the session was closed already.
    bool MarkClosedByOther();
    static void CallBackIfDue(Session& session);
    std::shared_ptr<const FrameHandler> Handler() const;

    const std::shared_ptr<ByteStream> stream;
    /// Only the stream's handlers use this.
    FrameReader reader{maxHeaderBytes, maxFrameBytes};

    mutable std::mutex mutex;
    bool open = true;
    bool started = false;
    /// True when the other side has closed the session and the callback has not been called.
    bool callbackDue = false;
    /// It is shared, so that a handler that closes the session is not destroyed while it runs.
    std::shared_ptr<const FrameHandler> handler;
    CloseCallback callback;
};

std::shared_ptr<Session> Session::Create(std::shared_ptr<ByteStream> stream)
{
    if (!stream)
        throw std::invalid_argument("a session needs a stream");
    return std::shared_ptr<Session>(new Session(std::move(stream)));
}

Session::Session(std::shared_ptr<ByteStream> stream) : state(std::make_unique<State>(std::move(stream))) {}

Session::~Session()
{
    state->stream->Close();
}

void Session::Start(FrameHandler handler)
{
    {
        const std::lock_guard lock(state->mutex);
        if (state->started)
            throw std::logic_error("the session has been started already");
        state->started = true;
        if (!state->open)
            return;
        state->handler = std::make_shared<const FrameHandler>(std::move(handler));
    }
    // The stream must not own the session, because the session closes when its last reference goes.
    state->stream->Start(
        [weak = weak_from_this()](std::string_view bytes) {
            if (const auto session = weak.lock())
                State::OnBytes(*session, bytes);
        },
        [weak = weak_from_this()](std::error_code error) {
            if (const auto session = weak.lock())
                State::OnStreamClosed(*session, error);
        });
}

void Session::SetCloseCallback(CloseCallback callback)
{
    bool due = false;
    {
        const std::lock_guard lock(state->mutex);
        if (!state->open && !state->callbackDue)
            return;
        std::swap(state->callback, callback);
        due = state->callbackDue;
    }
    if (due)
        state->stream->Post([self = shared_from_this()] { State::CallBackIfDue(*self); });
}

bool Session::Send(std::string_view payload)
{
    if (payload.size() > maxFrameBytes || !IsOpen())
        return false;
    // Header and body go in one write, so that they make one packet and nothing waits between them.
    state->stream->Write(MakeFrame(payload));
    return true;
}

void Session::Close()
{
    std::shared_ptr<const FrameHandler> droppedHandler;
    CloseCallback droppedCallback;
    {
        const std::lock_guard lock(state->mutex);
        state->open = false;
        state->callbackDue = false;
        droppedHandler.swap(state->handler);
        droppedCallback.swap(state->callback);
    }
    state->stream->Close();
}

void Session::Abort(const std::string& reason)
{
    if (!state->MarkClosedByOther())
        return;
    zetcore::debug::TraceLine(1, traceCategory, "Session closed: " + reason);
    state->stream->Post([self = shared_from_this()] { State::CallBackIfDue(*self); });
    state->stream->Close();
}

bool Session::IsOpen() const
{
    const std::lock_guard lock(state->mutex);
    return state->open;
}

bool Session::State::MarkClosedByOther()
{
    // It is destroyed after the lock is gone, and what the handler owns with it.
    std::shared_ptr<const FrameHandler> dropped;
    const std::lock_guard lock(mutex);
    if (!open)
        return false;
    open = false;
    callbackDue = true;
    dropped.swap(handler);
    return true;
}

std::shared_ptr<const Session::FrameHandler> Session::State::Handler() const
{
    const std::lock_guard lock(mutex);
    return handler;
}

void Session::State::OnBytes(Session& session, std::string_view bytes)
{
    State& state = *session.state;
    try {
        state.reader.Append(bytes);
        while (auto handler = state.Handler()) {
            auto frame = state.reader.Next();
            if (!frame)
                return;
            (*handler)(std::move(*frame));
        }
    } catch (const std::exception& error) {
        session.Abort(error.what());
    } catch (...) {
        session.Abort("a handler threw something that is no exception");
    }
}

void Session::State::OnStreamClosed(Session& session, std::error_code error)
{
    if (!session.state->MarkClosedByOther())
        return;
    zetcore::debug::TraceLine(
        4, traceCategory,
        "Session closed by the other side" +
            (error ? ": " + zetcore::filesupport::DescribeError(error) : std::string()));
    CallBackIfDue(session);
}

void Session::State::CallBackIfDue(Session& session)
{
    CloseCallback callback;
    {
        State& state = *session.state;
        const std::lock_guard lock(state.mutex);
        if (!state.callbackDue || !state.callback)
            return;
        state.callbackDue = false;
        callback.swap(state.callback);
    }
    try {
        if (const TransportError result = callback(session.shared_from_this()); result != 0)
            zetcore::debug::TraceLine(2, traceCategory,
                                      "The close callback returned " + std::to_string(result));
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, std::string("The close callback threw: ") + error.what());
    }
}

} // namespace zettransport
