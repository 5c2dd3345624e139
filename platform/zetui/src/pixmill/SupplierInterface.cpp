#include <zetui/pixmill/SupplierInterface.h>

#include <zetui/pixmill/Path.h>

namespace zetui::pixmill {

SupplierInterface::~SupplierInterface() = default;

PathP SupplierInterface::CreatePath() const
{
    return std::make_shared<Path>();
}

PenP SupplierInterface::CreatePen(const Color& color, float width) const
{
    return std::make_shared<Pen>(Pen{color, width});
}

const SupplierInterface& DefaultSupplier()
{
    static const SupplierInterface supplier;
    return supplier;
}

} // namespace zetui::pixmill
