// The New Population command and its dialog, which remembers its values to the end of the run.
#pragma once

#include "platform/win32.h"

namespace pelmora {

// Asks for the parameters of a population and opens a window for it. The random stream is seeded
// here and nowhere else.
void NewPopulation();

// The procedure of the Population Description dialog.
INT_PTR CALLBACK PopulationDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);

} // namespace pelmora
