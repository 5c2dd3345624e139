#include <zetui/utility/ResourceManager.h>

namespace zetui::utility {

ResourceManager::~ResourceManager() = default;

} // namespace zetui::utility
