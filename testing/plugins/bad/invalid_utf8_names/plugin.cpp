#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Its names are Latin-1, a cut-off UTF-8 sequence, an encoded surrogate and an overlong slash.
ZET_VST2_ENTRY
{
    return MakeEffect({"Caf\xE9 Verb \xFF\xFE", "M\xFCller \xE2\x82", "\xED\xA0\x80 \xC0\xAF",
                       FourCharacters("BaU8"), 1000},
                      host);
}
