#include "services/message.h"

#include "resources/resource.h"
#include "services/application.h"
#include "services/desktop.h"

#include <cstdio>

namespace pelmora {
namespace {

// One buffer is enough: only one alert is open at a time.
char message_text[512];

INT_PTR CALLBACK MessageDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    if (message == WM_INITDIALOG) {
        CenterOnDesktop(dialog);
        SetDlgItemTextA(dialog, IDC_MESSAGE_TEXT, message_text);
        return TRUE;
    }
    // Escape and the close box send the cancel command, which is ignored on purpose: only OK closes
    // an alert.
    if (message == WM_COMMAND && LOWORD(wparam) == IDOK) {
        EndDialog(dialog, IDOK);
        return TRUE;
    }
    return FALSE;
}

INT_PTR show_message_text(HWND owner) {
    return DialogBoxParamA(AppInstance(), MAKEINTRESOURCEA(IDD_MESSAGE), owner, MessageDlgProc, 0);
}

} // namespace

INT_PTR ShowMessage(HWND owner, const char* text) {
    if (text != nullptr) {
        std::snprintf(message_text, sizeof message_text, "%s", text);
    }
    return show_message_text(owner);
}

INT_PTR ShowMessageF(HWND owner, MessageFormat format, int value) {
    std::snprintf(message_text, sizeof message_text, format.text(), value);
    return show_message_text(owner);
}

} // namespace pelmora
