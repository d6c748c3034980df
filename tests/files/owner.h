// A window that owns what a test opens.
#pragma once

#include "platform/win32.h"

namespace pelmora_test {

// Shown for as long as it lives; dialogs stand over it.
class Owner {
  public:
    Owner() {
        WNDCLASSEXA plain{};
        plain.cbSize = sizeof plain;
        plain.lpfnWndProc = DefWindowProcA;
        plain.lpszClassName = "Owner";
        RegisterClassExA(&plain);
        window_ = CreateWindowExA(0, "Owner", "Owner", WS_OVERLAPPEDWINDOW, 20, 20, 300, 200,
                                  nullptr, nullptr, nullptr, nullptr);
        ShowWindow(window_, SW_SHOW);
    }
    ~Owner() { DestroyWindow(window_); }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;
    HWND handle() const { return window_; }

  private:
    HWND window_;
};

} // namespace pelmora_test
