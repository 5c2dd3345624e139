#include "ClapPlugin.h"

using namespace zettestplugin;

namespace {

constexpr Descriptor plugins[] = {Ordinary("org.bramble.no-factory", "No Factory")};
using Library = ClapLibrary<plugins>;

const void* NoFactory(const char*)
{
    return nullptr;
}

} // namespace

ZET_CLAP_ENTRY{interfaceVersion, &Library::Init, &Library::Deinit, &NoFactory};
