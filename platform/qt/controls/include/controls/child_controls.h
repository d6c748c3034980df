// Controls created by the program in its top-level windows.
#pragma once

#include "platform/win32.h"

#include <QRect>

namespace platform {

struct ChildDesign {
    LPCSTR class_name; // "EDIT" or "BUTTON", case-insensitive
    LPCSTR text;
    DWORD style;
    int id;
};

// Creates a control at `area` of the parent's client area. Null, with the last error set, when the
// class is unknown or the parent cannot have controls.
HWND create_child(const ChildDesign& design, const QRect& area, HWND parent);

} // namespace platform
