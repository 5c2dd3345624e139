#include "MissingLibrary.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Needs a library that the system does not find.
ZET_VST2_ENTRY
{
    return WhatTheMissingLibrarySays() == 0 ? nullptr : MakeEffect(Ordinary("Missing Library", "BaMi"), host);
}
