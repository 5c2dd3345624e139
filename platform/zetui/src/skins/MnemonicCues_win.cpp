#include "skins/MnemonicCues.h"

#include <windows.h>

namespace zetui::skins {

bool SystemAlwaysShowsMnemonics()
{
    BOOL always = FALSE;
    return SystemParametersInfoW(SPI_GETKEYBOARDCUES, 0, &always, 0) && always;
}

} // namespace zetui::skins
