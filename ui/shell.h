// The program from its start to its end.
#pragma once

#include "platform/win32.h"

namespace pelmora {

// Registers the classes of the main, the population and the editor window, whose names must have
// been loaded, and makes those of the controls in their dialogs known. A failure with one of the
// latter two windows is shown to the user.
void RegisterWindowClasses(HINSTANCE instance);

// Runs the program; `show` is how the main window is to appear. Returns the exit code, 0 too when
// the main window could not be created. To be called once in a process.
int PelmoraMain(HINSTANCE instance, int show);

} // namespace pelmora
