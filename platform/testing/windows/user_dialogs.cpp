// The simulated user's actions in the system's dialogs.
#include "platform/testing/windows/user_parts.h"

#include <array>

#include <dlgs.h>
#include <winspool.h>

namespace user {

namespace {

constexpr int kFileName = cmb13; // the name field of the file dialogs
constexpr int kPrinters = cmb4;  // the list of the print dialog
constexpr int kBoxText = 0xFFFF; // of a message box

bool is_message_box(HWND dialog) {
    return GetDlgItem(dialog, kBoxText) != nullptr;
}

// The open file or print dialog; when a message box is in front, the box's owner.
HWND system_dialog_window() {
    HWND dialog = newest_dialog();
    if (dialog != nullptr && is_message_box(dialog)) {
        dialog = GetWindow(dialog, GW_OWNER);
    }
    const bool found = dialog != nullptr && (GetDlgItem(dialog, kFileName) != nullptr ||
                                             GetDlgItem(dialog, kPrinters) != nullptr);
    return found ? dialog : nullptr;
}

HWND name_field(HWND dialog) {
    HWND field = GetDlgItem(dialog, kFileName);
    return field != nullptr ? field : GetDlgItem(dialog, edt1);
}

std::string text_of(HWND window) {
    std::array<wchar_t, 1024> text{};
    const int size = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    std::string result(3 * static_cast<std::size_t>(size), '\0');
    result.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, result.data(),
                            static_cast<int>(result.size()), nullptr, nullptr)));
    return result;
}

} // namespace

std::string system_dialog() {
    HWND dialog = system_dialog_window();
    return dialog != nullptr ? text_of(dialog) : "";
}

std::string question() {
    HWND box = newest_dialog();
    return box != nullptr && is_message_box(box) ? text_of(GetDlgItem(box, kBoxText)) : "";
}

bool save_system_dialog_picture(const std::string& path) {
    return save_picture(system_dialog_window(), path);
}

void choose_file(const std::string& name) {
    queue_action([name] {
        HWND dialog = system_dialog_window();
        SetWindowTextW(name_field(dialog), wide(name).c_str());
        PostMessageA(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
    });
}

void accept_system_dialog() {
    queue_action([] { PostMessageA(GetDlgItem(system_dialog_window(), IDOK), BM_CLICK, 0, 0); });
}

// Under Wine a printer's port may be a file. It is stored with the printer's settings, which the
// dialog reads when a printer is selected.
void print_to_file(const std::string& path) {
    queue_action([path] {
        std::array<wchar_t, 128> printer{};
        DWORD size = printer.size();
        GetDefaultPrinterW(printer.data(), &size);
        const std::wstring key =
            L"System\\CurrentControlSet\\Control\\Print\\Printers\\" + std::wstring(printer.data());
        const std::wstring port = wide(path);
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), L"Port", REG_SZ, port.c_str(),
                        static_cast<DWORD>((port.size() + 1) * sizeof(wchar_t)));
        HWND dialog = system_dialog_window();
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(kPrinters, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, kPrinters)));
        accept_system_dialog();
    });
}

void answer(const std::string& button) {
    queue_action([button] {
        HWND box = newest_dialog();
        for (HWND child = GetWindow(box, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            std::string label = text_of(child);
            std::erase(label, '&');
            if (label == button) {
                PostMessageA(child, BM_CLICK, 0, 0);
            }
        }
    });
}

void answer_with_return() {
    press(newest_dialog(), "Return");
}

void cancel_system_dialog() {
    queue_action([] { PostMessageA(system_dialog_window(), WM_COMMAND, IDCANCEL, 0); });
}

} // namespace user
