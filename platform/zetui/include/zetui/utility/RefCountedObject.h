#pragma once

#include <atomic>

#include <zetui/Export.h>

namespace zetui::utility {

/// Counts the references on itself and deletes itself with the last one. It starts with no reference.
class ZETUI_API RefCountedObject
{
  public:
    void AddRef() noexcept;
    void Release() noexcept;

  protected:
    RefCountedObject() noexcept = default;
    RefCountedObject(const RefCountedObject&) = delete;
    RefCountedObject& operator=(const RefCountedObject&) = delete;
    virtual ~RefCountedObject();
    /// Called when the last reference has been given up. The destructor runs next.
    virtual void BeforeDeletion() noexcept;
    bool IsBeingDeleted() const noexcept;

  private:
    std::atomic<int> references{0};
};

} // namespace zetui::utility
