#pragma once

#include <zetui/Export.h>

namespace zetui::pixmill {

/// Where drawing resources come from. The host owns it and keeps it alive while any window that was given it
/// is open; null stands for the toolkit's own.
class ZETUI_API SupplierInterface
{
  public:
    virtual ~SupplierInterface();
};

} // namespace zetui::pixmill
