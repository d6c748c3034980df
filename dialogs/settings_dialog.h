// Dialogs in which settings are entered: how they end.
#pragma once

#include "platform/win32.h"

#include <functional>

namespace pelmora {

// Opens a dialog of settings; whether the user accepted it and the owner is still there. Neither
// the dialog's result says so (a program that is being ended gets one that nobody chose) nor could
// one flag for all, as another window's dialog may end meanwhile. OK ends the dialog unless `take`,
// which takes over what was entered, returns false; the procedure hands its messages on to the two
// calls below.
bool ask_settings(HWND owner, WORD dialog, DLGPROC procedure,
                  const std::function<bool(HWND dialog)>& take);

// Called with the parameter of the dialog's WM_INITDIALOG.
void begin_answer(HWND dialog, LPARAM parameter);

// Answers the buttons. False for other commands.
INT_PTR answer_button(HWND dialog, WORD command);

} // namespace pelmora
