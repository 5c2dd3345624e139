#include <windows.h>

#include <zetcore/string/Utf.h>

#include "session/Language.h"

namespace zetaudiopluginmanager {

std::string SystemLanguage()
{
    ULONG count = 0;
    ULONG length = 0;
    if (!::GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, nullptr, &length) || length == 0)
        return {};
    std::wstring names(length, L'\0');
    if (!::GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, names.data(), &length))
        return {};
    // The buffer holds a list of names, each ended by a null. The first name is the user's first choice.
    return zetcore::string::UTF16to8(names.c_str());
}

} // namespace zetaudiopluginmanager
