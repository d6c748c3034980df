// The wait cursor.
#pragma once

#include "platform/win32.h"

namespace pelmora {

// Shows the wait cursor, and the arrow again at the end.
class WaitCursor {
  public:
    WaitCursor() { SetCursor(LoadCursorA(nullptr, IDC_WAIT)); }
    ~WaitCursor() { SetCursor(LoadCursorA(nullptr, IDC_ARROW)); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace pelmora
