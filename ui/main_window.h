// The main window, with its menu and the status line.
#pragma once

#include "platform/win32.h"

namespace pelmora {

// The procedure of the main window's class. Destroying the window ends the program.
LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

// Creates the main window, hidden. Null when it could not be created.
HWND CreateMainWindow(HINSTANCE instance);

} // namespace pelmora
