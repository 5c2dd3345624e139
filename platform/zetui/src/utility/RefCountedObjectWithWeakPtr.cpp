#include <zetui/utility/RefCountedObjectWithWeakPtr.h>

namespace zetui::utility {

struct RefCountedObjectWithWeakPtr::WeakTarget
{
    /// Null from the moment the last reference is given up.
    RefCountedObjectWithWeakPtr* object;
};

RefCountedObjectWithWeakPtr::~RefCountedObjectWithWeakPtr()
{
    // Needed for objects that nobody ever referred to, such as one whose constructor failed.
    RefCountedObjectWithWeakPtr::BeforeDeletion();
}

RefCountedObjectWithWeakPtr::WeakKey RefCountedObjectWithWeakPtr::GetWeakKey()
{
    if (!weakKey)
        weakKey = std::make_shared<WeakTarget>(WeakTarget{IsBeingDeleted() ? nullptr : this});
    return weakKey;
}

IntrusivePtr<RefCountedObjectWithWeakPtr> RefCountedObjectWithWeakPtr::Lock(const WeakKey& key)
{
    return key ? key->object : nullptr;
}

void RefCountedObjectWithWeakPtr::BeforeDeletion() noexcept
{
    if (weakKey)
        weakKey->object = nullptr;
}

} // namespace zetui::utility
