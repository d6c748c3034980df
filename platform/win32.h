// The door to the platform. On Windows it is the system's own headers; elsewhere it declares the
// subset of Win32 that the program uses, answered by the layer beside it.
//
// The program includes nothing else of any platform, and asks nowhere which one it is on.
#pragma once

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
//
#include <commctrl.h>

#else

#include "platform/qt/subset.h"

#endif
