#pragma once

#include <string>

#include <zetcore/Export.h>

namespace zetcore::utility {

/// The host application's display name; "zetaudiopluginmanager" until a host sets its own. Any thread.
ZETCORE_API std::wstring GetClientName();
ZETCORE_API void SetClientName(const std::wstring& name);

} // namespace zetcore::utility
