#pragma once

namespace zetaudiofilterscan {

/// From this call on, standard error is told which files plug-ins tried to change and were refused, so that
/// it is in their log. Seen are the C library's calls by the plug-ins of this process and their libraries.
/// Not seen are system calls without the library, modules that are bound to it in another way, and the
/// programs that plug-ins start; those are refused in silence. On Windows, and in builds with sanitizers,
/// which have such calls of their own, nothing is told.
void NoteRefusals();

} // namespace zetaudiofilterscan
