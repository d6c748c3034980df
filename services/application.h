// The running program: its instance and its main window, set once at start-up.
#pragma once

#include "platform/win32.h"

namespace pelmora {

// Where resources are loaded from. The platform may give null, which is a valid instance.
HINSTANCE AppInstance();
void SetAppInstance(HINSTANCE instance);

// The main window; null before it is created. It stays set after the window is destroyed.
HWND MainWindow();
void SetMainWindow(HWND window);

} // namespace pelmora
