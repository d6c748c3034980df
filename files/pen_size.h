// The edit field for the pen's width that the metafile and the print dialog have.
#pragma once

#include "platform/win32.h"

#include <string>

namespace pelmora {

// Reads the field into `text`, at most 31 bytes. False when it is empty.
bool take_pen_size(HWND dialog, std::string* text);

} // namespace pelmora
