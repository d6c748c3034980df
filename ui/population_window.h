// Creation and window procedure of the population window.
#pragma once

#include "evolve/params.h"
#include "platform/win32.h"

namespace pelmora {

// A new hidden window with a random population. Null when it could not be created; the user is
// told.
HWND CreateLogoWindow(HINSTANCE instance, const EvolveParams& params);

// The procedure of the population window's class.
LRESULT CALLBACK LogoWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

} // namespace pelmora
