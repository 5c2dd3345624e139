#include "clap/ClapHost.h"

#include <string>

#include <zetcore/string/Utf.h>
#include <zetcore/utility/ClientName.h>

namespace zetaudiopluginhost::clap {

namespace {

constexpr const char* hostVersion = "1.0.0";

std::string ClientName()
{
    return zetcore::string::UTF16to8(zetcore::string::ForDisplay(zetcore::utility::GetClientName()));
}

const void* NoExtension(const Host*, const char*) noexcept
{
    return nullptr;
}

void Ignore(const Host*) noexcept {}

} // namespace

const Host& ScanHost()
{
    static const std::string name = ClientName();
    static const Host host{interfaceVersion, nullptr,      name.c_str(), name.c_str(), "",
                           hostVersion,      &NoExtension, &Ignore,      &Ignore,      &Ignore};
    return host;
}

} // namespace zetaudiopluginhost::clap
