#include "files/file_dialog.h"

#include "files/paths.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <utility>
#include <vector>

namespace pelmora {
namespace {

constexpr std::size_t kOpenRoom = 260;
constexpr std::size_t kSaveRoom = 512;

// The system silently refuses a name that does not fit its buffer. So the buffer holds every path,
// four bytes for each of 32,767 characters, and accept_name() refuses with a message.
constexpr DWORD kSystemRoom = 4 * 32768;

// The log files are in the working directory, so no dialog may change it.
constexpr DWORD kFlags = OFN_EXPLORER | OFN_ENABLESIZING | OFN_HIDEREADONLY | OFN_NOCHANGEDIR |
                         OFN_PATHMUSTEXIST | OFN_ENABLEHOOK;

// The rules for a name.
struct NameRules {
    const char* title;
    std::size_t room; // in characters, the terminating zero included
    Overwrite overwrite;
    const char* extension; // for a name without one
};

// Counts the bytes that are not UTF-8 continuation bytes.
std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

bool refuse(HWND dialog, const NameRules& rules, const std::string& reason) {
    MessageBoxA(dialog, reason.c_str(), rules.title, MB_OK | MB_ICONWARNING);
    return false;
}

// Whether a chosen name is accepted; if not, the user is told why.
bool accept_name(HWND dialog, const std::string& name, const NameRules& rules) {
    if (characters(name) >= rules.room) {
        return refuse(dialog, rules,
                      "The file name is too long.\nWith its folder it may have " +
                          std::to_string(rules.room - 1) + " characters.");
    }
    const std::string path = with_default_extension(name, rules.extension);
    std::error_code error;
    if (std::filesystem::is_directory(path_of(path), error)) {
        return refuse(dialog, rules, path + " is a folder.\nPlease choose a different file name.");
    }
    if (rules.overwrite == Overwrite::silently || !std::filesystem::exists(path_of(path), error)) {
        return true;
    }
    const std::string text = path + " already exists.\nDo you want to replace it?";
    return MessageBoxA(dialog, text.c_str(), rules.title,
                       MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2) == IDYES;
}

// Checks the name in the dialog, which stays open after a refusal. The system's own overwrite
// question would check the typed name, without the extension.
UINT_PTR CALLBACK NameHookProc(HWND hook, UINT message, WPARAM, LPARAM lparam) {
    if (message != WM_NOTIFY) {
        return 0;
    }
    const auto& notice = *reinterpret_cast<const OFNOTIFYA*>(lparam);
    if (notice.hdr.code != CDN_FILEOK) {
        return 0;
    }
    const OPENFILENAMEA& request = *notice.lpOFN;
    if (accept_name(hook, request.lpstrFile,
                    *reinterpret_cast<const NameRules*>(request.lCustData))) {
        return 0;
    }
    SetWindowLongPtrA(hook, DWLP_MSGRESULT, 1);
    return 1;
}

std::string ask(HWND owner, const char* filter, DWORD flags, const NameRules& rules,
                BOOL(WINAPI* show)(OPENFILENAMEA*)) {
    std::vector<char> name(kSystemRoom);
    OPENFILENAMEA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = filter;
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = name.data();
    dialog.nMaxFile = kSystemRoom;
    dialog.Flags = kFlags | flags;
    dialog.lCustData = reinterpret_cast<LPARAM>(&rules);
    dialog.lpfnHook = NameHookProc;
    if (!show(&dialog) || !IsWindow(owner)) {
        return {};
    }
    return with_default_extension(name.data(), rules.extension);
}

} // namespace

std::string AskOpenName(HWND owner, const char* filter) {
    constexpr NameRules kRules{"Open", kOpenRoom, Overwrite::silently, ""};
    return ask(owner, filter, OFN_FILEMUSTEXIST, kRules, GetOpenFileNameA);
}

std::string AskSaveName(HWND owner, const char* filter, Overwrite overwrite,
                        const char* extension) {
    const NameRules rules{"Save As", kSaveRoom, overwrite, extension};
    return ask(owner, filter, 0, rules, GetSaveFileNameA);
}

std::string with_default_extension(std::string path, const char* extension) {
    if (path.find('.') == std::string::npos) {
        path += extension;
    }
    return path;
}

} // namespace pelmora
