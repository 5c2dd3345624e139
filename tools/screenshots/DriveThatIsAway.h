#pragma once

namespace screenshots {

/// A folder, in UTF-8, on a drive that this machine does not have at the moment.
extern const char* const folderOnDriveThatIsAway;

} // namespace screenshots
