#include "dialogs/pen_size.h"

#include "resources/resource.h"

namespace pelmora {

bool take_pen_size(HWND dialog, std::string* text) {
    char typed[32] = "";
    GetDlgItemTextA(dialog, IDC_PEN_SIZE, typed, sizeof typed);
    *text = typed;
    return !text->empty();
}

} // namespace pelmora
