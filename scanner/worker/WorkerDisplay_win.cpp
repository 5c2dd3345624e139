#include "WorkerDisplay.h"

namespace zetaudiofilterscan {

void ChooseDisplay(bool) {}

} // namespace zetaudiofilterscan
