// Dialogs: accessible names, focus and cleanup.
#include "resources/resource.h"
#include "tests/contract/test_windows.h"
#include "tests/support/answers.h"
#include "user/window.h"

namespace {

using namespace pelmora_test;

const QWidget* widget_of(HWND window) {
    return platform::window_of(window)->widget();
}

// With a parameter other than 0 the dialog ends at once.
INT_PTR CALLBACK EndingProc(HWND dialog, UINT message, WPARAM, LPARAM parameter) {
    if (message == WM_INITDIALOG && parameter != 0) {
        PostMessageA(dialog, WM_COMMAND, IDOK, 0);
    }
    return message == WM_COMMAND && EndDialog(dialog, IDOK) ? TRUE : FALSE;
}

void open_dialog(HWND owner, int id, LPARAM parameter = 0) {
    DialogBoxParamA(nullptr, MAKEINTRESOURCEA(WORD(id)), owner, EndingProc, parameter);
}

TEST_F(Windows, LabelsNameFieldsAndSlidersForScreenReaders) {
    Answers()
        .dialog("Population Description",
                [](HWND dialog) {
                    const auto name = [dialog](int control) {
                        return widget_of(GetDlgItem(dialog, control))->accessibleName();
                    };
                    EXPECT_EQ(name(IDC_MAX_DEPTH).toStdString(), "Max Depth");
                    EXPECT_EQ(name(IDC_PCROSS).toStdString(), "Crossover");
                    user::press(dialog, "Return");
                })
        .during([&] { open_dialog(window_, IDD_POPULATION); });
}

TEST_F(Windows, DialogsReturnTheFocusToTheirOwner) {
    HWND other = nullptr;
    user::Script script(end_script);
    const auto active = [](const HWND& window) {
        return [&window] { return widget_of(window)->isActiveWindow(); };
    };
    Answers answers;
    if (user::programs_place_windows()) { // else the owner cannot come before the other window
        answers.dialog("About", [&](HWND) { other = show_other(); });
        answers.await("the other window", active(other)); // the window manager is asynchronous
    }
    answers.press("About", "Return").during([&] { open_dialog(window_, IDD_ABOUT); });
    script.await("the owner", active(window_));
    run(script);
    DestroyWindow(other);
}

TEST_F(Windows, DialogsLeaveNoWidgetsBehind) {
    const auto widgets = [&] { return widget_of(window_)->findChildren<QWidget*>().size(); };
    const auto before = widgets();
    for (int i = 0; i < 100; ++i) {
        open_dialog(window_, IDD_POPULATION, 1);
    }
    settle();
    EXPECT_EQ(widgets(), before);
}

} // namespace
