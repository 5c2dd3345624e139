#pragma once

#include <functional>
#include <memory>

#include <zetcore/Export.h>
#include <zetcore/signals/Connection.h>

namespace zetcore::events {

/// The part of a signal that does not depend on the arguments of its slots. Any thread; no lock is held while
/// a slot is called or destroyed.
class ZETCORE_API SlotList
{
  public:
    SlotList();
    /// Ends every connection.
    ~SlotList();
    SlotList(const SlotList&) = delete;
    SlotList& operator=(const SlotList&) = delete;

    Connection Add(std::shared_ptr<const void> slot);
    bool IsEmpty() const;
    /// Calls `call` with each slot, in the order of connection: with those that were connected when this
    /// began, and still are when their turn comes. What `call` throws ends it.
    void ForEach(const std::function<void(const void* slot)>& call) const;

  private:
    struct State;
    friend struct ConnectedSlot;
    std::shared_ptr<State> state;
};

} // namespace zetcore::events
