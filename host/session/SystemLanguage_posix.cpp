#include <cstdlib>

#include "session/Language.h"

namespace zetaudiopluginmanager {

std::string SystemLanguage()
{
    // As for every program, the first variable that is set decides.
    for (const char* const variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const char* const value = std::getenv(variable); value && *value)
            return value;
    }
    return {};
}

} // namespace zetaudiopluginmanager
