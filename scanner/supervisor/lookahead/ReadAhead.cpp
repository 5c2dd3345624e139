#include "supervisor/lookahead/ReadAhead.h"

#include <exception>
#include <string>
#include <variant>

#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetcore/debug/Trace.h>

#include "TraceCategory.h"
#include "supervisor/lookahead/FileReadAhead.h"

namespace zetaudiofilterscan {

void ReadAhead(const zetaudiofilterhost::PluginLocator& module) noexcept
{
    try {
        const zetaudiofilterhost::ModuleFiles files = zetaudiofilterhost::FindModuleFiles(module);
        if (const auto* library = std::get_if<std::wstring>(&files.library))
            // The libraries that it needs are shared by many and soon in memory. Asking for them gained
            // nothing.
            ReadFileAhead(*library);
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(3, traceCategory, error.what());
    }
}

} // namespace zetaudiofilterscan
