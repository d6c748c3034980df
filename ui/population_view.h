// What a population window shows: the grid of cells or one lifer alone; and the mouse on it.
//
// Rectangles and points are in pixels of the window's client area.
#pragma once

#include "ui/population_record.h"

namespace pelmora {

// Goes by the width of the client area; at least one column.
void LogoLayoutGrid(HWND window, LogoWindow* record);

// The cell of the lifer at `index`, also when it is outside the client area. Before the first
// layout all cells are in one column.
RECT LogoCellRect(const LogoWindow* record, int index);

// The lifer whose cell contains the point, or -1.
int LogoHitTest(HWND window, const LogoWindow* record, POINT point);

// Asks for the cell with its frames to be painted again, without erasing.
void LogoInvalidateCell(const LogoWindow* record, int index);

// The frames of a selection, drawn at once.
void LogoDrawSelection(HDC device, const LogoWindow* record, int index);
void LogoEraseSelection(HDC device, const LogoWindow* record, int index);

// The answer to a paint message.
void LogoPaint(HWND window, LogoWindow* record);

// The answer to a button message; `flags` are those that come with it.
void LogoMouse(HWND window, LogoWindow* record, UINT message, WPARAM flags, POINT point);

} // namespace pelmora
