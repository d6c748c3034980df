// The pens of a drawing.
#pragma once

#include "platform/win32.h"

namespace pelmora {

// Makes a solid pen of this colour (components 0 to 255), selects it into the device and releases
// the one that it replaces.
void pen_renew(HDC device, int width, int red, int green, int blue);

} // namespace pelmora
