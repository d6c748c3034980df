// The New Population command and its dialog, which remembers its values to the end of the run.
#pragma once

#include "platform/win32.h"

namespace pelmora {

// What the dialog shows when it opens. Moved sliders are stored at once, the texts when the dialog
// is accepted.
struct NewPopulationSettings {
    char turtles[32];
    char max_children[32];
    char max_depth[32];
    float PCROSS, PCOLOR, PMUTATE, PFNODE;
    float FWDMULT, REPMULT, RPTMULT, CLRMULT, LOOPMULT, TURNMULT;
    bool accepted; // the last dialog ended with OK
};

// The settings of this run.
const NewPopulationSettings& new_population_settings();

// Asks for the parameters of a population and opens a window for it. The random stream is seeded
// here and nowhere else.
void NewPopulation();

// The procedure of the Population Description dialog.
INT_PTR CALLBACK PopulationDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);

} // namespace pelmora
