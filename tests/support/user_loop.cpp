#include "tests/support/user_loop.h"

#include "resources/resource.h"

#include <gtest/gtest.h>

#include <cstring>

namespace pelmora_test {

void run(user::Script& script) {
    script.start();
    HACCEL accelerators = LoadAcceleratorsA(nullptr, MAKEINTRESOURCEA(IDR_ACCELERATORS));
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0)) {
        if (TranslateAcceleratorA(message.hwnd, accelerators, &message) == 0) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
}

void end_script(const std::string& failure) {
    EXPECT_EQ(failure, "");
    PostQuitMessage(0);
}

void settle() {
    user::Script script(end_script);
    script.then("nothing", [] {});
    run(script);
}

HWND show_owner() {
    WNDCLASSEXA plain{};
    plain.cbSize = sizeof plain;
    plain.lpfnWndProc = DefWindowProcA;
    plain.lpszClassName = "Owner";
    RegisterClassExA(&plain);
    HWND owner = CreateWindowExA(0, "Owner", "Owner", WS_OVERLAPPEDWINDOW, 20, 20, 300, 200,
                                 nullptr, nullptr, nullptr, nullptr);
    ShowWindow(owner, SW_SHOW);
    return owner;
}

void offer_text(const std::string& text, bool with_zero) {
    const std::size_t size = text.size() + (with_zero ? 1 : 0);
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    std::memcpy(GlobalLock(memory), text.c_str(), size);
    GlobalUnlock(memory);
    EXPECT_EQ(SetClipboardData(CF_TEXT, memory), memory);
}

std::vector<std::string> alerts_of(const std::function<void()>& action,
                                   const std::function<void(HWND)>& look) {
    std::vector<std::string> texts;
    HWND last = nullptr;
    user::Script script([](const std::string&) {});
    script.await("an alert, for ever", [&] {
        const HWND alert = user::find_window("Dialog");
        if (alert != nullptr && alert != last) {
            last = alert;
            texts.push_back(user::text(alert, IDC_MESSAGE_TEXT));
            if (look) {
                look(alert);
            }
            if (IsWindow(alert)) {
                user::press(alert, "Return");
            }
        }
        return false;
    });
    script.start();
    action();
    return texts;
}

} // namespace pelmora_test
