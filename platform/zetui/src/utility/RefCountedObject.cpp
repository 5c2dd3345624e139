#include <zetui/utility/RefCountedObject.h>

namespace zetui::utility {

namespace {

/// The count while the destructor runs. It is so large that references which the destructor takes for a
/// moment do not delete the object again.
constexpr int beingDeleted = 1 << 30;

} // namespace

RefCountedObject::~RefCountedObject() = default;

void RefCountedObject::AddRef() noexcept
{
    references.fetch_add(1, std::memory_order_relaxed);
}

void RefCountedObject::Release() noexcept
{
    if (references.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    references.store(beingDeleted, std::memory_order_relaxed);
    BeforeDeletion();
    delete this;
}

bool RefCountedObject::IsBeingDeleted() const noexcept
{
    return references.load(std::memory_order_relaxed) >= beingDeleted / 2;
}

void RefCountedObject::BeforeDeletion() noexcept {}

} // namespace zetui::utility
