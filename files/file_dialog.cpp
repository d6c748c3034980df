#include "files/file_dialog.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace pelmora {
namespace {

constexpr std::size_t kOpenRoom = 260;
constexpr std::size_t kSaveRoom = 512;

// The log files lie in the working directory, which no dialog may change.
constexpr DWORD kFlags =
    OFN_EXPLORER | OFN_ENABLESIZING | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;

// UTF-8 begins each character with a byte that is none of its followers.
std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

// The room is in characters, the terminating zero included; a character takes up to four bytes.
template <std::size_t room>
std::string ask(HWND owner, const char* filter, DWORD flags, BOOL(WINAPI* show)(OPENFILENAMEA*)) {
    std::array<char, 4 * room> name{};
    OPENFILENAMEA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = filter;
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = name.data();
    dialog.nMaxFile = name.size();
    dialog.Flags = kFlags | flags;
    const bool chosen = show(&dialog) && IsWindow(owner) && characters(name.data()) < room;
    return chosen ? std::string(name.data()) : std::string();
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
