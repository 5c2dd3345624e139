#include "RefusalNotes.h"

namespace zetaudiofilterscan {

void NoteRefusals() {}

} // namespace zetaudiofilterscan
