#include "skins/MnemonicCues.h"

namespace zetui::skins {

/// The desktops show them while Alt is down.
bool SystemAlwaysShowsMnemonics()
{
    return false;
}

} // namespace zetui::skins
