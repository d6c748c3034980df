// Painting of windows.
#pragma once

#include "user/window.h"

namespace platform {

// Sends WM_ERASEBKGND for the invalid region now instead of in BeginPaint, if it is to be erased.
void erase_now(Window& window);

} // namespace platform
