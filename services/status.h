// The status line at the bottom of the main window.
#pragma once

#include "platform/win32.h"

namespace pelmora {

// Puts `text`, cut to 255 bytes, into the status line; the next paint shows it. Null keeps the text
// and only invalidates the line.
void SetStatusText(const char* text);

// What the status line says; "Ready." at start.
const char* StatusText();

// Tells assistive technology of the status line of the main window `window`, and of its changes.
void DescribeStatusLine(HWND window);

// The place of the status line in the client area of the main window `window`.
RECT StatusRect(HWND window);

} // namespace pelmora
