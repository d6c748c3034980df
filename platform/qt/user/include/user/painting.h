// Painting a window: its device contexts, and what waits to be painted.
#pragma once

#include "user/window.h"

namespace platform {

// Has a window erase what waits to be painted now, where that is wanted, rather than when it is
// painted.
void erase_now(Window& window);

} // namespace platform
