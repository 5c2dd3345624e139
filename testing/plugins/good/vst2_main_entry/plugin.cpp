#include "Vst2Plugin.h"

using namespace zettestplugin;

/// From the days when the entry function was called "main". A C++ function of that name cannot have this
/// signature, so only the symbol has it.
ZET_PLUGIN_EXPORT Effect* OldEntry(HostCallback host) __asm__("main");

Effect* OldEntry(HostCallback host)
{
    return MakeEffect(
        {"Old Mill Chorus", "Hedgerow Sound", "Old Mill Chorus", FourCharacters("OmCh"), 110, CategoryEffect},
        host);
}
