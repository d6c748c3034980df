#include "files/pen_size.h"

#include "resources/resource.h"
#include "services/application.h"

namespace pelmora {

bool take_pen_size(HWND dialog, std::string* text) {
    char typed[32] = "";
    GetDlgItemTextA(dialog, IDC_PEN_SIZE, typed, sizeof typed);
    *text = typed;
    return !text->empty();
}

bool ask_settings(HWND owner, WORD dialog, DLGPROC procedure) {
    bool accepted = false;
    DialogBoxParamA(AppInstance(), MAKEINTRESOURCEA(dialog), owner, procedure,
                    reinterpret_cast<LPARAM>(&accepted));
    return accepted;
}

void begin_answer(HWND dialog, LPARAM parameter) {
    SetWindowLongPtrA(dialog, DWLP_USER, parameter);
}

INT_PTR answer_button(HWND dialog, WORD command, bool (*take)(HWND dialog)) {
    if (command != IDOK && command != IDCANCEL) {
        return FALSE;
    }
    if (command == IDCANCEL || take(dialog)) {
        *reinterpret_cast<bool*>(GetWindowLongPtrA(dialog, DWLP_USER)) = command == IDOK;
        EndDialog(dialog, command);
    }
    return TRUE;
}

} // namespace pelmora
