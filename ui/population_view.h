// What a population window shows: the grid of cells or one lifer alone.
//
// Rectangles and points are in pixels of the window's client area.
#pragma once

#include "ui/population_record.h"

namespace pelmora {

// Sets the columns from the width of the client area; at least one.
void LogoLayoutGrid(HWND window, LogoWindow* record);

// The cell of the lifer at `index`, even outside the client area. Before the first layout all cells
// are in one column.
RECT LogoCellRect(const LogoWindow* record, int index);

// The lifer whose cell contains the point, or -1.
int LogoHitTest(HWND window, const LogoWindow* record, POINT point);

// Invalidates the cell and its frames, without erasing.
void LogoInvalidateCell(const LogoWindow* record, int index);

// The frames of a selection, drawn at once.
void LogoDrawSelection(HDC device, const LogoWindow* record, int index);
void LogoEraseSelection(HDC device, const LogoWindow* record, int index);

// Handles WM_PAINT.
void LogoPaint(HWND window, LogoWindow* record);

} // namespace pelmora
