// What dialogs of settings have in common: their buttons and, of two of them, a field for the pen's
// width.
#pragma once

#include "platform/win32.h"

#include <string>

namespace pelmora {

// Reads the field into `text`, at most 31 bytes. False when it is empty.
bool take_pen_size(HWND dialog, std::string* text);

// Opens a dialog of settings; whether the user accepted it. Neither the dialog's result says so
// (a program that is being ended gets one that nobody chose) nor could one flag for all, as another
// window's dialog may end meanwhile.
bool ask_settings(HWND owner, WORD dialog, DLGPROC procedure);

// Called with the parameter of the dialog's WM_INITDIALOG.
void begin_answer(HWND dialog, LPARAM parameter);

// Answers the buttons: OK ends the dialog unless `take`, which takes over its settings, returns
// false. False for other commands.
INT_PTR answer_button(HWND dialog, WORD command, bool (*take)(HWND dialog));

} // namespace pelmora
