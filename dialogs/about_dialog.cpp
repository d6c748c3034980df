#include "dialogs/about_dialog.h"

#include "resources/resource.h"
#include "services/application.h"
#include "services/desktop.h"

namespace pelmora {
namespace {

INT_PTR CALLBACK AboutDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    if (message == WM_INITDIALOG) {
        CenterOnDesktop(dialog);
        return TRUE;
    }
    const WORD command = LOWORD(wparam);
    if (message == WM_COMMAND && (command == IDOK || command == IDCANCEL)) {
        EndDialog(dialog, command);
        return TRUE;
    }
    return FALSE;
}

} // namespace

void ShowAboutBox(HWND owner) {
    DialogBoxParamA(AppInstance(), MAKEINTRESOURCEA(IDD_ABOUT), owner, AboutDlgProc, 0);
}

} // namespace pelmora
