// How a user selects, marks and looks at lifers: by the mouse, the keyboard or assistive
// technology.
#pragma once

#include "platform/accessible.h"
#include "ui/population_record.h"

namespace pelmora {

// Handles a mouse button message; `flags` is its wParam, `point` in the client area.
void LogoMouse(HWND window, LogoWindow* record, UINT message, WPARAM flags, POINT point);

// Handles a key press, of a virtual key. In the grid the arrow keys, Home and End move the
// selection in reading order or by rows, Space toggles the selected lifer's mark, Return shows it
// alone. There Return and Escape go back, Left and Right show the neighbour. While a key is held,
// only those that move act again. False for a key that does nothing.
bool LogoKey(HWND window, LogoWindow* record, WPARAM key, bool held);

// Does what assistive technology asks for, to the lifer of a cell: see PopulationCells. Showing a
// lifer alone that is alone shows the grid again. Nothing when there is no such cell.
void LogoAct(HWND window, LogoWindow* record, platform::AccessibleAction action, LPARAM cell);

} // namespace pelmora
