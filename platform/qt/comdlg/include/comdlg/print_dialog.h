// The dialog in which the user chooses a printer.
#pragma once

#include "platform/win32.h"

class QPrinter;

namespace platform {

// Lets the user choose and set up `printer`, over `owner` (null: none), as run_toolkit_dialog does.
// What the program would not heed is not offered. True when a printer was chosen.
bool choose_printer(QPrinter& printer, HWND owner);

} // namespace platform
