#pragma once

/// Lets the system's loader find a function. Everything else in a plug-in stays hidden.
#ifdef _WIN32
#define ZET_PLUGIN_EXPORT extern "C" __declspec(dllexport)
#else
#define ZET_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#endif
