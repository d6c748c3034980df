// Makes controls from their descriptions.
#pragma once

#include "controls/controls.h"
#include "resources/resource_reader.h"

namespace platform {

// Makes the control that `item` describes, at `area` of the holder, and adds it. A class or a style
// that the layer does not know ends the program: see resource_fault().
Control* add_control(Controls& controls, const DialogItem& item, const QRect& area, HWND parent);

} // namespace platform
