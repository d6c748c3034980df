// A dialog's field for the pen's width.
#pragma once

#include "platform/win32.h"

#include <string>

namespace pelmora {

// Reads the field into `text`, at most 31 bytes. False when it is empty.
bool take_pen_size(HWND dialog, std::string* text);

} // namespace pelmora
