// What assistive technology is told of a content and its cells, in its own words and numbers.
#pragma once

#include "platform/accessible.h"

#include <string>

namespace platform {

// Of the content as a whole. A table is described by its rows and columns.
LONG role_of(const AccessibleContent& content);
std::string description_of(const AccessibleContent& content);

LONG cell_role_of(const AccessibleContent& content);

// The STATE_SYSTEM_... of a cell in a window.
LONG state_of(HWND window, const AccessibleCell& cell);

// Where NAVDIR_... leads from a cell; the index of no cell for nowhere.
int neighbour(const AccessibleContent& content, int from, LONG direction);

RECT client_area(HWND window);

// The program counts in pixels of a 96 dpi screen, and clients in those of the real one.
POINT to_screen(HWND window, POINT point);
POINT from_screen(HWND window, POINT point);

} // namespace platform
