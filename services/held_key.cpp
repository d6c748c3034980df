#include "services/held_key.h"

#include "platform/win32.h"

namespace pelmora {

void DropRepeatedPresses() {
    MSG next;
    const auto peek = [&next](UINT remove) {
        return PeekMessageA(&next, nullptr, WM_KEYDOWN, WM_KEYDOWN, remove) != FALSE;
    };
    while (peek(PM_NOREMOVE) && (HIWORD(static_cast<UINT_PTR>(next.lParam)) & KF_REPEAT) != 0) {
        peek(PM_REMOVE);
    }
}

} // namespace pelmora
