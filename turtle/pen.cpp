#include "turtle/pen.h"

namespace pelmora {

void pen_renew(HDC device, int width, int red, int green, int blue) {
    const COLORREF color =
        RGB(static_cast<BYTE>(red), static_cast<BYTE>(green), static_cast<BYTE>(blue));
    DeleteObject(SelectObject(device, CreatePen(PS_SOLID, width, color)));
}

} // namespace pelmora
