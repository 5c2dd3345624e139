#pragma once

#include <cstddef>
#include <utility>

namespace zetui::utility {

/// Holds one reference on an object that counts its own (`AddRef`, `Release`). One thread at a time per
/// pointer.
template<typename T>
class IntrusivePtr
{
  public:
    IntrusivePtr() noexcept = default;
    IntrusivePtr(std::nullptr_t) noexcept {}
    IntrusivePtr(T* pointer) : object(pointer)
    {
        if (object)
            object->AddRef();
    }
    IntrusivePtr(const IntrusivePtr& other) : IntrusivePtr(other.object) {}
    template<typename U>
    IntrusivePtr(const IntrusivePtr<U>& other) : IntrusivePtr(static_cast<T*>(other.get()))
    {}
    IntrusivePtr(IntrusivePtr&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    IntrusivePtr& operator=(IntrusivePtr other) noexcept
    {
        std::swap(object, other.object);
        return *this;
    }
    ~IntrusivePtr()
    {
        if (object)
            object->Release();
    }

    T* get() const noexcept { return object; }
    T& operator*() const noexcept { return *object; }
    T* operator->() const noexcept { return object; }
    explicit operator bool() const noexcept { return object != nullptr; }
    friend bool operator==(const IntrusivePtr& left, const IntrusivePtr& right) noexcept
    {
        return left.object == right.object;
    }

  private:
    T* object = nullptr;
};

template<typename T, typename... Arguments>
IntrusivePtr<T> MakeIntrusive(Arguments&&... arguments)
{
    return IntrusivePtr<T>(new T(std::forward<Arguments>(arguments)...));
}

} // namespace zetui::utility
