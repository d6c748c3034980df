// The platform interface. On Windows it includes the system's headers. Elsewhere it declares the
// subset of Win32 that the program uses; platform/qt implements it.
//
// The program includes no other platform header and never tests which platform it runs on.
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
