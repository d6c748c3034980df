#include "dialogs/print_dialog.h"

#include "dialogs/pen_size.h"
#include "dialogs/settings_dialog.h"
#include "resources/resource.h"

namespace pelmora {

// A string this short is not allocated, so nothing is thrown.
std::string printPenWidth = "0"; // NOLINT(cert-err58-cpp)

bool AskPrintPenWidth(HWND owner) {
    return ask_settings(owner, IDD_PRINT, PrintPensizeDlgProc,
                        [](HWND dialog) { return take_pen_size(dialog, &printPenWidth); });
}

INT_PTR CALLBACK PrintPensizeDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        begin_answer(dialog, lparam);
        SetDlgItemTextA(dialog, IDC_PEN_SIZE, printPenWidth.c_str());
        if (GetDlgCtrlID(reinterpret_cast<HWND>(wparam)) == IDC_PEN_SIZE) {
            return TRUE;
        }
        SetFocus(GetDlgItem(dialog, IDC_PEN_SIZE));
        return FALSE;
    }
    return message == WM_COMMAND ? answer_button(dialog, LOWORD(wparam)) : FALSE;
}

} // namespace pelmora
