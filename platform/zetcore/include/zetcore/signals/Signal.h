#pragma once

#include <functional>
#include <memory>
#include <utility>

#include <zetcore/signals/ScopedConnection.h>
#include <zetcore/signals/SlotList.h>
#include <zetcore/utility/NullPtrException.h>

namespace zetcore::events {

/// A signal without result. Slots run on the thread that raises it, in the order of connection. Any thread
/// may raise it, connect and disconnect, slots themselves included: a slot that is connected while the signal
/// is raised is called from the next time on, and one that is disconnected before its turn is left out. No
/// lock is held while slots run. An exception of a slot goes to whoever has raised the signal, and the slots
/// after it are not called.
template<typename... Arguments>
class Signal
{
  public:
    using Slot = std::function<void(Arguments...)>;

    /// Throws the null-pointer error for an empty slot.
    Connection Connect(Slot slot)
    {
        if (!slot)
            utility::DoThrowNullPtrException("Signal::Slot");
        return list.Add(std::make_shared<const Slot>(std::move(slot)));
    }

    /// Raises the signal.
    void operator()(Arguments... arguments) const
    {
        list.ForEach([&](const void* slot) { (*static_cast<const Slot*>(slot))(arguments...); });
    }

    bool IsEmpty() const { return list.IsEmpty(); }

  private:
    SlotList list;
};

} // namespace zetcore::events
