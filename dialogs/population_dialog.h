// The Population Description dialog, which remembers its values to the end of the run.
#pragma once

#include "evolve/params.h"
#include "platform/win32.h"

namespace pelmora {

// Asks for the parameters of a population. False when the user cancelled. They are those of this
// dialog: while a window's dialog keeps the caller from going on, the values may be changed in
// another one.
bool AskPopulation(EvolveParams* params);

// The procedure of the dialog.
INT_PTR CALLBACK PopulationDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);

} // namespace pelmora
