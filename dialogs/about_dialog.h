#pragma once

#include "platform/win32.h"

namespace pelmora {

// Shows the About box until it is dismissed.
void ShowAboutBox(HWND owner);

} // namespace pelmora
