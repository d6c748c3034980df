#include "services/desktop.h"

namespace pelmora {

void CenterOnDesktop(HWND dialog) {
    RECT desktop{};
    RECT window{};
    GetWindowRect(GetDesktopWindow(), &desktop);
    GetWindowRect(dialog, &window);
    const int width = window.right - window.left;
    const int height = window.bottom - window.top;
    MoveWindow(dialog, desktop.left + (desktop.right - desktop.left - width) / 2,
               desktop.top + (desktop.bottom - desktop.top - height) / 3, width, height, FALSE);
}

} // namespace pelmora
