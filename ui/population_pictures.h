// The pictures of a population's lifers: a surface for each cell, and what is drawn on it.
#pragma once

#include "ui/population_record.h"

namespace pelmora {

// Makes the surfaces that pictures are drawn on, while graphics objects are left: a cell without a
// surface has no picture.
void LogoMakeSurfaces(HWND window, LogoWindow* record);

// Makes the picture of one lifer and stores the score of its drawing.
void LogoMakePict(HWND window, LogoWindow* record, int index);

// The same for all lifers, in order.
void LogoMakePopPicts(HWND window, LogoWindow* record);

} // namespace pelmora
