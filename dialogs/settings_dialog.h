// How settings dialogs open and end.
#pragma once

#include "platform/win32.h"

#include <functional>

namespace pelmora {

// Opens a settings dialog. True when the user accepted it and the owner still exists or is null.
// The dialog's result does not tell this: quitting the program ends a dialog, too. Nor would a
// shared flag, as another window's dialog may end meanwhile. OK calls `take`, which stores the
// input, and ends the dialog unless that returns false. The procedure must call the two functions
// below.
bool ask_settings(HWND owner, WORD dialog, DLGPROC procedure,
                  const std::function<bool(HWND dialog)>& take);

// To be called on WM_INITDIALOG with its parameter.
void begin_answer(HWND dialog, LPARAM parameter);

// Handles OK and Cancel. False for other commands.
INT_PTR answer_button(HWND dialog, WORD command);

} // namespace pelmora
