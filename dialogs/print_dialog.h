// The print setting and its dialog, which opens before the desktop's print dialog.
#pragma once

#include "platform/win32.h"

#include <string>

namespace pelmora {

// The pen's width in printer pixels as typed, at most 31 bytes. Shared by all windows, kept until
// the program ends.
extern std::string printPenWidth;

// Asks for the pen's width. False when the user cancelled or the owner was destroyed.
bool AskPrintPenWidth(HWND owner);

// The procedure of the pen width dialog.
INT_PTR CALLBACK PrintPensizeDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);

} // namespace pelmora
