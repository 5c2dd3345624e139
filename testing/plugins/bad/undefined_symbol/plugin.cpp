#include "Vst2Plugin.h"

using namespace zettestplugin;

/// This function is defined nowhere.
extern "C" int zet_symbol_that_nobody_defines();

ZET_VST2_ENTRY
{
    return zet_symbol_that_nobody_defines() == 0 ? nullptr
                                                 : MakeEffect(Ordinary("Undefined Symbol", "BaUn"), host);
}
