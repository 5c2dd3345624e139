#pragma once

#include <string>

namespace zetaudiopluginhost {

/// The first library that the module needs and that is in none of the places where the system looks. Empty
/// when there is none, for example because it is a library of the module's own that lacks another.
std::string FindMissingLibrary(const std::wstring& module);

} // namespace zetaudiopluginhost
