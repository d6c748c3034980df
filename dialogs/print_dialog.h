// The setting of the printing and its dialog, which comes before the desktop's own.
#pragma once

#include "platform/win32.h"

#include <string>

namespace pelmora {

// The pen's width in printer pixels as typed, at most 31 bytes. For all windows and as long as the
// program runs.
extern std::string printPenWidth;

// Asks for the pen's width. False when the user cancelled or the owner is gone.
bool AskPrintPenWidth(HWND owner);

// The procedure of the pen width dialog.
INT_PTR CALLBACK PrintPensizeDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);

} // namespace pelmora
