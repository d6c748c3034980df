// The population window: its life and its commands.
#pragma once

#include "evolve/params.h"
#include "platform/win32.h"

namespace pelmora {

// A new hidden window with a random population. Null when that failed, which the user was told.
HWND CreateLogoWindow(HINSTANCE instance, const EvolveParams& params);

// The procedure of the population window's class.
LRESULT CALLBACK LogoWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

} // namespace pelmora
