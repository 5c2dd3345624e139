#include "string/CaseFolding.h"

#include <windows.h>

namespace zetcore::string {

bool EqualFolded(std::wstring_view left, std::wstring_view right)
{
    return ::CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                  static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

} // namespace zetcore::string
