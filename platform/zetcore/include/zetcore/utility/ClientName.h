#pragma once

#include <string>

#include <zetcore/Export.h>

namespace zetcore::utility {

/// The display name of the host application. It is "zetaudiopluginmanager" until a host sets its own. Any
/// thread.
ZETCORE_API std::wstring GetClientName();
ZETCORE_API void SetClientName(const std::wstring& name);

} // namespace zetcore::utility
