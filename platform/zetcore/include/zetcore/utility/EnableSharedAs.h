#pragma once

#include <memory>

namespace zetcore::utility {

/// The one base that holds the weak reference to an object that is owned by shared pointers; reached
/// virtually, so that an object has one whatever its bases are.
class SharedBase : public std::enable_shared_from_this<SharedBase>
{
  public:
    SharedBase() = default;
    SharedBase(const SharedBase&) noexcept = default;
    SharedBase& operator=(const SharedBase&) noexcept = default;
    virtual ~SharedBase() = default;
};

/// Gives `T` the references to itself, typed. Empty while no shared pointer owns the object.
template<typename T>
class EnableSharedAs : public virtual SharedBase
{
  public:
    std::shared_ptr<T> SharedThis() { return std::dynamic_pointer_cast<T>(weak_from_this().lock()); }
    std::weak_ptr<T> WeakThis() { return SharedThis(); }
};

} // namespace zetcore::utility
