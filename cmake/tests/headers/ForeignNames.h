// The names that Xlib and Qt make macros of. A host may include them before our headers.
#pragma once

#if __has_include(<X11/Xlib.h>)
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#else
#define None 0L
#define Bool int
#define Status int
#define True 1
#define False 0
#define Always 2
#define Success 0
#define Unsorted 0
#define Above 0
#define Below 1
#define KeyPress 2
#define KeyRelease 3
#define FocusIn 9
#define FocusOut 10
#define Expose 12
#define GrayScale 1
#define CursorShape 0
#endif

#ifndef signals
#define signals public
#define slots
#define emit
#define foreach for
#define forever for (;;)
#endif
