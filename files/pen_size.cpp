#include "files/pen_size.h"

#include "resources/resource.h"

namespace pelmora {

bool take_pen_size(HWND dialog, std::string* text) {
    char typed[32] = "";
    GetDlgItemTextA(dialog, IDC_PEN_SIZE, typed, sizeof typed);
    *text = typed;
    return !text->empty();
}

INT_PTR answer_button(HWND dialog, WORD command, bool (*take)(HWND dialog)) {
    if (command != IDOK && command != IDCANCEL) {
        return FALSE;
    }
    if (command == IDCANCEL || take(dialog)) {
        EndDialog(dialog, command);
    }
    return TRUE;
}

} // namespace pelmora
