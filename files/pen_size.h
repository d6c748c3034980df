// What the metafile and the print dialog have in common: a field for the pen's width, and buttons.
#pragma once

#include "platform/win32.h"

#include <string>

namespace pelmora {

// Reads the field into `text`, at most 31 bytes. False when it is empty.
bool take_pen_size(HWND dialog, std::string* text);

// Answers the buttons: OK ends the dialog unless `take`, which takes over its settings, returns
// false. False for other commands.
INT_PTR answer_button(HWND dialog, WORD command, bool (*take)(HWND dialog));

} // namespace pelmora
