// Places dialogs on the desktop.
#pragma once

#include "platform/win32.h"

namespace pelmora {

// Moves a dialog, without repainting it, to the horizontal middle of the desktop and a third of the
// free height down. Its size stays.
void CenterOnDesktop(HWND dialog);

} // namespace pelmora
