#pragma once

#include <utility>

#include <zetcore/signals/Connection.h>

namespace zetcore::events {

/// A connection that ends with this object. Movable, not copyable.
class ScopedConnection
{
  public:
    ScopedConnection() noexcept = default;
    /// Implicit, so that it takes what `Signal::Connect` returns.
    ScopedConnection(Connection made) noexcept : connection(std::move(made)) {}
    ~ScopedConnection() { connection.Disconnect(); }
    ScopedConnection(ScopedConnection&& other) noexcept : connection(std::exchange(other.connection, {})) {}
    ScopedConnection& operator=(ScopedConnection&& other)
    {
        // The old connection ends with `old`, which leaves an object that is moved to itself as it was.
        ScopedConnection old(std::move(other));
        std::swap(connection, old.connection);
        return *this;
    }

    bool IsConnected() const noexcept { return connection.IsConnected(); }
    void Disconnect() { connection.Disconnect(); }

  private:
    Connection connection;
};

} // namespace zetcore::events
