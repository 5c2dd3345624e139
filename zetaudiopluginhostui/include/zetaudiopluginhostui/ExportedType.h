#pragma once

/// For a class of which only some members are exported: _TYPE at the class, so that others can name its type,
/// and _LOCAL at the members that are not for them.
#if defined(_WIN32)
#define ZETAUDIOPLUGINHOSTUI_TYPE
#define ZETAUDIOPLUGINHOSTUI_LOCAL
#else
#define ZETAUDIOPLUGINHOSTUI_TYPE __attribute__((visibility("default")))
#define ZETAUDIOPLUGINHOSTUI_LOCAL __attribute__((visibility("hidden")))
#endif
