#include "screenshots/DriveThatIsAway.h"

namespace screenshots {

const char* const folderOnDriveThatIsAway = "/mnt/Studio Drive/Plug-Ins";

} // namespace screenshots
