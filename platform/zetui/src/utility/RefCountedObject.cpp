#include <zetui/utility/RefCountedObject.h>

namespace zetui::utility {

RefCountedObject::~RefCountedObject() = default;

void RefCountedObject::AddRef() noexcept
{
    references.fetch_add(1, std::memory_order_relaxed);
}

void RefCountedObject::Release() noexcept
{
    if (references.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete this;
}

} // namespace zetui::utility
