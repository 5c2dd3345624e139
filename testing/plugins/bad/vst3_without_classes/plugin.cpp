#include "Vst3Plugin.h"

using namespace zettestplugin;

namespace {

Vst3Factory factory({"Bramble Test Works", "", "", {}});

} // namespace

/// A factory that makes nothing.
ZET_VST3_FACTORY
{
    return factory.Reference();
}
