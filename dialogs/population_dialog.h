// The Population Description dialog, which remembers its values until the program ends.
#pragma once

#include "evolve/params.h"
#include "platform/win32.h"

namespace pelmora {

// Asks for the parameters of a population. False when the user cancelled or the main window is
// gone. They are this dialog's values even if another one changes the settings before this returns:
// a nested modal loop can delay that.
bool AskPopulation(EvolveParams* params);

// The procedure of the dialog.
INT_PTR CALLBACK PopulationDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);

} // namespace pelmora
