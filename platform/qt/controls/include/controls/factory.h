// Creates controls from their descriptions.
#pragma once

#include "controls/controls.h"
#include "resources/resource_reader.h"

namespace platform {

// Creates the control that `item` describes, at `area` of the holder, and adds it. An unknown class
// or style ends the program; see resource_fault().
Control* add_control(Controls& controls, const DialogItem& item, const QRect& area, HWND parent);

} // namespace platform
