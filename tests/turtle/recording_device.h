// A device that records the calls to it: "pen WIDTH COLOUR", "select PEN", "delete PEN",
// "move X,Y", "line X,Y". Pens are numbered as they are made; 0 is the stock pen.
#pragma once

#include "platform/win32.h"

#include <string>

namespace pelmora_test {

HDC recording_device();

// What was recorded since the last call. Starts a new record, its pens numbered from 1.
std::string take_record();

} // namespace pelmora_test
