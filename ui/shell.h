// The program from its start to its end.
#pragma once

#include "platform/win32.h"

namespace pelmora {

// Registers the classes of the main, the population and the editor window, and of the controls in
// their dialogs. Needs LoadWindowNames() before. The user is told when the class of the population
// or the editor window could not be registered.
void RegisterWindowClasses(HINSTANCE instance);

// Runs the program; `show` is the SW_ value of the main window. Returns the exit code, also 0 when
// the main window could not be created. Call it once per process.
int PelmoraMain(HINSTANCE instance, int show);

} // namespace pelmora
