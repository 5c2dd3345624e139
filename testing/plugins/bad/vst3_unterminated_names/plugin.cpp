#include <string>

#include "Vst3Plugin.h"

using namespace zettestplugin;

namespace {

const std::string endless(500, 'X');

Vst3Factory factory({endless.c_str(),
                     endless.c_str(),
                     endless.c_str(),
                     {{Uid(0xBAD0BAD0, 0x1F2E4D3C, 0x8B7A6958, 0x00000001), audioModuleClass, endless.c_str(),
                       nullptr, endless.c_str(), endless.c_str(), endless.c_str()}}});

} // namespace

/// Every text fills its array to the last unit and has no terminator.
ZET_VST3_FACTORY
{
    return factory.Reference();
}
