// The print dialog.
#pragma once

#include "platform/win32.h"

class QPrinter;

namespace platform {

// Lets the user choose and configure `printer` in a modal dialog over `owner` (null: none); see
// run_toolkit_dialog(). Hides options that the program ignores. True when a printer was chosen.
bool choose_printer(QPrinter& printer, HWND owner);

} // namespace platform
