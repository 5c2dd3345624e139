#include "screenshots/DriveThatIsAway.h"

namespace screenshots {

const char* const folderOnDriveThatIsAway = "Q:\\Plug-Ins";

} // namespace screenshots
