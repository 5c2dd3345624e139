#pragma once

#include <memory>

namespace zetcore::utility {

/// Holds the weak reference of an object that shared pointers own. It is a virtual base, so that an object
/// has one reference, whatever its bases are.
class SharedBase : public std::enable_shared_from_this<SharedBase>
{
  public:
    SharedBase() = default;
    SharedBase(const SharedBase&) noexcept = default;
    SharedBase& operator=(const SharedBase&) noexcept = default;
    virtual ~SharedBase() = default;
};

/// Gives an object of class `T` references to itself, with that type. They are empty while no shared pointer
/// owns the object.
template<typename T>
class EnableSharedAs : public virtual SharedBase
{
  public:
    std::shared_ptr<T> SharedThis() { return std::dynamic_pointer_cast<T>(weak_from_this().lock()); }
    std::weak_ptr<T> WeakThis() { return SharedThis(); }
};

} // namespace zetcore::utility
