#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Its entry function has the old name "main". A C++ function of that name cannot have this signature, so
/// only the symbol is called so.
ZET_PLUGIN_EXPORT Effect* OldEntry(HostCallback host) __asm__("main");

Effect* OldEntry(HostCallback host)
{
    return MakeEffect(
        {"Old Mill Chorus", "Hedgerow Sound", "Old Mill Chorus", FourCharacters("OmCh"), 110, CategoryEffect},
        host);
}
