#pragma once

#include <utility>

#include "formats/ScanSteps.h"
#include "vst3/Vst3Abi.h"

namespace zetaudiopluginhost::vst3 {

/// A reference to a plug-in's object. It is released by `Release` only: after an exception out of the plug-in
/// nothing of it is called any more.
template<class Interface>
class Vst3Object
{
  public:
    Vst3Object() = default;
    /// Takes over the reference.
    explicit Vst3Object(void* given) : object(static_cast<Interface*>(given)) {}
    Vst3Object(Vst3Object&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    Vst3Object& operator=(Vst3Object&& other) noexcept
    {
        object = std::exchange(other.object, nullptr);
        return *this;
    }

    Interface* operator->() const noexcept { return object; }
    explicit operator bool() const noexcept { return object != nullptr; }

    /// Another interface of the same object; empty when it has none.
    template<class Other>
    Vst3Object<Other> Query() const
    {
        void* other = nullptr;
        const Result result = CallPlugin([&] { return object->QueryInterface(Other::iid.Data(), &other); });
        return result == resultOk ? Vst3Object<Other>(other) : Vst3Object<Other>();
    }
    void Release()
    {
        if (Interface* released = std::exchange(object, nullptr))
            CallPlugin([released] { return released->Release(); });
    }

  private:
    Interface* object = nullptr;
};

} // namespace zetaudiopluginhost::vst3
