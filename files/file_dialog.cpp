#include "files/file_dialog.h"

#include <array>
#include <utility>

namespace pelmora {
namespace {

constexpr std::size_t kOpenRoom = 260;
constexpr std::size_t kSaveRoom = 512;

// The log files lie in the working directory, which no dialog may change.
constexpr DWORD kFlags =
    OFN_EXPLORER | OFN_ENABLESIZING | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;

template <std::size_t room>
std::string ask(HWND owner, const char* filter, DWORD flags, BOOL(WINAPI* show)(OPENFILENAMEA*)) {
    std::array<char, room> name{};
    OPENFILENAMEA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = filter;
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = name.data();
    dialog.nMaxFile = room;
    dialog.Flags = kFlags | flags;
    return show(&dialog) && IsWindow(owner) ? std::string(name.data()) : std::string();
}

} // namespace

std::string AskOpenName(HWND owner, const char* filter) {
    return ask<kOpenRoom>(owner, filter, OFN_FILEMUSTEXIST, GetOpenFileNameA);
}

std::string AskSaveName(HWND owner, const char* filter, Overwrite overwrite,
                        const char* extension) {
    const DWORD flags = overwrite == Overwrite::ask ? OFN_OVERWRITEPROMPT : 0;
    std::string name = ask<kSaveRoom>(owner, filter, flags, GetSaveFileNameA);
    return name.empty() ? name : with_default_extension(std::move(name), extension);
}

std::string with_default_extension(std::string path, const char* extension) {
    if (path.find('.') == std::string::npos) {
        path += extension;
    }
    return path;
}

} // namespace pelmora
