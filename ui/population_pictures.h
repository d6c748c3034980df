// The pictures of a population's lifers: a surface for each cell, and what is drawn on it.
#pragma once

#include "ui/population_record.h"

namespace pelmora {

// Makes the surface on which pictures are drawn.
void LogoMakeOffscreenSurface(HWND window, LogoWindow* record);

// Makes the surfaces that hold the cells' pictures, while graphics objects are left: a cell without
// a surface has no picture.
void LogoMakeCellSurfaces(HWND window, LogoWindow* record);

// Makes the picture of one lifer and stores the score of its drawing.
void LogoMakePict(HWND window, LogoWindow* record, int index);

// The same for all lifers, in order.
void LogoMakePopPicts(HWND window, LogoWindow* record);

} // namespace pelmora
