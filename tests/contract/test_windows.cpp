#include "tests/contract/test_windows.h"

#include "resources/resource.h"

#include <utility>

namespace pelmora_test {

Lines log_lines;
std::function<LRESULT(HWND, UINT, WPARAM)> on_message;

namespace {

// The high word of a command's wParam: 0 from menus and buttons, above 1 from fields.
constexpr WORD kFromShortcut = 1;

std::string message_name(UINT message, WPARAM wparam, LPARAM lparam) {
    const auto place = static_cast<std::uintptr_t>(lparam);
    const std::string at = std::to_string(LOWORD(place)) + "," + std::to_string(HIWORD(place));
    switch (message) {
    case WM_CREATE:
        return "create";
    case WM_SIZE:
        return "size " + at;
    case WM_PAINT:
        return "paint";
    case WM_ERASEBKGND:
        return "erase";
    case WM_COMMAND:
        if (HIWORD(wparam) > kFromShortcut) {
            return "";
        }
        return "command " + std::to_string(LOWORD(wparam)) + " from " +
               std::to_string(HIWORD(wparam));
    case WM_LBUTTONDOWN:
        return "left " + std::to_string(wparam) + " at " + at;
    case WM_LBUTTONDBLCLK:
        return "double at " + at;
    case WM_RBUTTONDOWN:
        return "right " + std::to_string(wparam) + " at " + at;
    case WM_CLOSE:
        return "close";
    case WM_DESTROY:
        return "destroy";
    default:
        return message >= WM_USER ? "user " + std::to_string(message - WM_USER) : "";
    }
}

LRESULT CALLBACK LoggingProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const std::string name = message_name(message, wparam, lparam);
    if (!name.empty()) {
        log_lines.push_back(name);
    }
    const LRESULT answer = on_message ? on_message(window, message, wparam) : 0;
    return answer != 0 ? answer : DefWindowProcA(window, message, wparam, lparam);
}

} // namespace

Lines take_log() {
    return std::exchange(log_lines, {});
}

HWND show_other() {
    HWND other = CreateWindowExA(0, "Logging", "Other", WS_OVERLAPPEDWINDOW, 450, 20, 300, 200,
                                 nullptr, nullptr, nullptr, nullptr);
    ShowWindow(other, SW_SHOW);
    return other;
}

Windows::Windows() {
    WNDCLASSEXA logging{};
    logging.cbSize = sizeof logging;
    logging.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    logging.lpfnWndProc = LoggingProc;
    logging.cbWndExtra = 16;
    logging.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    logging.lpszMenuName = MAKEINTRESOURCEA(IDR_LOGO_MENU);
    logging.lpszClassName = "Logging";
    RegisterClassExA(&logging); // fails after the first test, as the class exists
    window_ = CreateWindowExA(WS_EX_OVERLAPPEDWINDOW, "Logging", "A window", WS_OVERLAPPEDWINDOW,
                              20, 20, 400, 300, nullptr, nullptr, nullptr, nullptr);
    created_ = take_log();
    ShowWindow(window_, SW_SHOWNORMAL);
    UpdateWindow(window_);
    settle();
    shown_ = take_log();
}

Windows::~Windows() {
    on_message = nullptr;
    DestroyWindow(window_);
    settle();
    take_log();
}

} // namespace pelmora_test
