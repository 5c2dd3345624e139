#include "process/SharedLibraries.h"

namespace zetaudiopluginhost {

SharedLibraries::SharedLibraries(Keeps) {}

SharedLibraries::~SharedLibraries() = default;

bool SharedLibraries::IsSystems(const std::string&) const
{
    return false;
}

void SharedLibraries::KeepAllBut(const std::wstring&) {}

void SharedLibraries::LetGo() {}

} // namespace zetaudiopluginhost
