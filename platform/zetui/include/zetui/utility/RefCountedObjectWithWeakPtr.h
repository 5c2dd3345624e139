#pragma once

#include <memory>

#include <zetui/Export.h>
#include <zetui/utility/IntrusivePtr.h>
#include <zetui/utility/RefCountedObject.h>

namespace zetui::utility {

/// A reference-counted object that can be referred to without keeping it alive. Its references are taken and
/// given up on the main thread.
class ZETUI_API RefCountedObjectWithWeakPtr : public RefCountedObject
{
  public:
    struct WeakTarget;
    /// The key outlives the object. Copies are cheap.
    using WeakKey = std::shared_ptr<WeakTarget>;

    WeakKey GetWeakKey();
    /// A reference on the object; null when the object is gone, or when its destructor runs.
    static IntrusivePtr<RefCountedObjectWithWeakPtr> Lock(const WeakKey& key);

  protected:
    RefCountedObjectWithWeakPtr() = default;
    ~RefCountedObjectWithWeakPtr() override;
    void BeforeDeletion() noexcept override;

  private:
    WeakKey weakKey;
};

} // namespace zetui::utility
