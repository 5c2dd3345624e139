#pragma once

#include <zetui/Export.h>
#include <zetui/pixmill/Types.h>

namespace zetui::pixmill {

/// Drawing resources come from here. The host owns it and keeps it alive while any window that was given it
/// is open; null stands for the toolkit's own. A host may override what it wants to make itself.
class ZETUI_API SupplierInterface
{
  public:
    virtual ~SupplierInterface();
    virtual PathP CreatePath() const;
    virtual PenP CreatePen(const Color& color, float width) const;
};

/// The toolkit's own supplier.
ZETUI_API const SupplierInterface& DefaultSupplier();

} // namespace zetui::pixmill
