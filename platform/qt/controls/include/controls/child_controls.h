// Controls that a program makes itself, in windows of its classes.
#pragma once

#include "platform/win32.h"

#include <QRect>

namespace platform {

struct ChildDesign {
    LPCSTR class_name; // "EDIT" or "BUTTON", in any case of its letters
    LPCSTR text;
    DWORD style;
    int id;
};

// Makes a control at `area` of the parent's client area. Null, with the last error set, when there
// is no such class or the parent cannot have controls.
HWND create_child(const ChildDesign& design, const QRect& area, HWND parent);

} // namespace platform
