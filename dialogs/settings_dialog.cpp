#include "dialogs/settings_dialog.h"

#include "services/application.h"

namespace pelmora {
namespace {

struct Answer {
    const std::function<bool(HWND)>& take;
    bool accepted = false;
};

} // namespace

bool ask_settings(HWND owner, WORD dialog, DLGPROC procedure,
                  const std::function<bool(HWND dialog)>& take) {
    Answer answer{take};
    DialogBoxParamA(AppInstance(), MAKEINTRESOURCEA(dialog), owner, procedure,
                    reinterpret_cast<LPARAM>(&answer));
    return answer.accepted && (owner == nullptr || IsWindow(owner));
}

void begin_answer(HWND dialog, LPARAM parameter) {
    SetWindowLongPtrA(dialog, DWLP_USER, parameter);
}

INT_PTR answer_button(HWND dialog, WORD command) {
    if (command != IDOK && command != IDCANCEL) {
        return FALSE;
    }
    auto& answer = *reinterpret_cast<Answer*>(GetWindowLongPtrA(dialog, DWLP_USER));
    if (command == IDCANCEL || answer.take(dialog)) {
        answer.accepted = command == IDOK;
        EndDialog(dialog, command);
    }
    return TRUE;
}

} // namespace pelmora
