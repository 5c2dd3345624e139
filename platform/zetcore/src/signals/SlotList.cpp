#include <zetcore/signals/SlotList.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

namespace zetcore::events {

struct ConnectedSlot
{
    std::weak_ptr<SlotList::State> list;
    std::shared_ptr<const void> function;
    std::atomic<bool> isConnected{true};
};

/// The vector is never changed but replaced. So a call of the slots keeps the vector that it began with.
struct SlotList::State
{
    using Slots = std::vector<std::shared_ptr<ConnectedSlot>>;

    std::shared_ptr<const Slots> Get() const
    {
        const std::lock_guard lock(mutex);
        return slots;
    }

    /// No slot is destroyed under the lock, because whoever takes a slot out holds it until this returns.
    template<typename Change>
    void Replace(const Change& change)
    {
        const std::lock_guard lock(mutex);
        auto changed = std::make_shared<Slots>(*slots);
        change(*changed);
        slots = std::move(changed);
    }

  private:
    mutable std::mutex mutex;
    std::shared_ptr<const Slots> slots = std::make_shared<const Slots>();
};

SlotList::SlotList() : state(std::make_shared<State>()) {}

SlotList::~SlotList()
{
    for (const auto& slot : *state->Get())
        slot->isConnected = false;
}

Connection SlotList::Add(std::shared_ptr<const void> function)
{
    auto slot = std::make_shared<ConnectedSlot>();
    slot->list = state;
    slot->function = std::move(function);
    state->Replace([&](State::Slots& slots) { slots.push_back(slot); });
    return Connection(slot);
}

bool SlotList::IsEmpty() const
{
    return state->Get()->empty();
}

void SlotList::ForEach(const std::function<void(const void* slot)>& call) const
{
    // A slot may end the signal: nothing of this object is touched after the first call.
    const auto slots = state->Get();
    for (const auto& slot : *slots) {
        if (slot->isConnected)
            call(slot->function.get());
    }
}

Connection::Connection(std::weak_ptr<ConnectedSlot> connected) noexcept : slot(std::move(connected)) {}

bool Connection::IsConnected() const noexcept
{
    const auto connected = slot.lock();
    return connected && connected->isConnected;
}

void Connection::Disconnect()
{
    const auto connected = slot.lock();
    if (!connected || !connected->isConnected.exchange(false))
        return;
    if (const auto list = connected->list.lock())
        list->Replace([&](auto& slots) { std::erase(slots, connected); });
}

} // namespace zetcore::events
