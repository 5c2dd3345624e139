#include <cstdlib>

#include "commands/Language.h"

namespace zetaudiopluginmanager {

std::string SystemLanguage()
{
    // The first that is set decides, as for every program.
    for (const char* const variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const char* const value = std::getenv(variable); value && *value)
            return value;
    }
    return {};
}

} // namespace zetaudiopluginmanager
