#pragma once

#include <memory>

#include <zetcore/Export.h>

namespace zetcore::events {

struct ConnectedSlot;

/// The tie between a signal and one of its slots. Copies stand for the same tie; it does not end with them
/// (see `ScopedConnection`). Any thread.
class ZETCORE_API Connection
{
  public:
    /// Makes a connection of nothing.
    Connection() noexcept = default;

    /// False after `Disconnect` and after the signal's end.
    bool IsConnected() const noexcept;
    /// The slot is called no more. A call that has begun on another thread goes on: this does not wait for
    /// it.
    void Disconnect();

  private:
    friend class SlotList;
    explicit Connection(std::weak_ptr<ConnectedSlot> slot) noexcept;

    std::weak_ptr<ConnectedSlot> slot;
};

} // namespace zetcore::events
