#pragma once

/// These two are for a class of which only some members are exported. _TYPE stands at the class, so that
/// hosts can name its type. _LOCAL stands at the members that hosts must not use.
#if defined(_WIN32)
#define ZETAUDIOPLUGINHOSTUI_TYPE
#define ZETAUDIOPLUGINHOSTUI_LOCAL
#else
#define ZETAUDIOPLUGINHOSTUI_TYPE __attribute__((visibility("default")))
#define ZETAUDIOPLUGINHOSTUI_LOCAL __attribute__((visibility("hidden")))
#endif
