#include <zetui/pixmill/SupplierInterface.h>

namespace zetui::pixmill {

SupplierInterface::~SupplierInterface() = default;

} // namespace zetui::pixmill
