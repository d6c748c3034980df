// What the simulated user sees on Windows.
#include "platform/testing/windows/user_parts.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <utility>

// gdiplus.h uses min and max without declaring them.
using std::max;
using std::min;
#include <objidl.h>
//
#include <gdiplus.h>

namespace user {

namespace {

// Numbers the windows in the order of their creation, which the system does not record.
class CreationOrder {
  public:
    CreationOrder() { hook_ = SetWindowsHookExA(WH_CBT, note, nullptr, GetCurrentThreadId()); }
    ~CreationOrder() { UnhookWindowsHookEx(hook_); }
    CreationOrder(const CreationOrder&) = delete;
    CreationOrder& operator=(const CreationOrder&) = delete;

    static int number(HWND window) {
        const auto found = numbers().find(window);
        return found != numbers().end() ? found->second : 0;
    }

  private:
    static std::map<HWND, int>& numbers() {
        static auto& all = *new std::map<HWND, int>; // used until the process ends
        return all;
    }
    static LRESULT CALLBACK note(int code, WPARAM wparam, LPARAM lparam) {
        if (code == HCBT_CREATEWND) {
            static int count = 0;
            numbers()[reinterpret_cast<HWND>(wparam)] = ++count;
        }
        return CallNextHookEx(nullptr, code, wparam, lparam);
    }
    HHOOK hook_;
};
const CreationOrder creation_order;

using Visitor = std::function<void(HWND)>;

// Calls `visit` with every visible top-level window of this process.
void each_window(const Visitor& visit) {
    EnumWindows(
        [](HWND window, LPARAM visitor) -> BOOL {
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            if (process == GetCurrentProcessId() && IsWindowVisible(window)) {
                (*reinterpret_cast<const Visitor*>(visitor))(window);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&visit));
}

HWND newer(HWND one, HWND other) {
    return CreationOrder::number(one) > CreationOrder::number(other) ? one : other;
}

std::string title_of(HWND window) {
    char title[256] = "";
    GetWindowTextA(window, title, sizeof title);
    return title;
}

// The pixels of a part of a device context, top row first.
struct Copy {
    Copy(HDC source, const RECT& area)
        : width(area.right - area.left), height(area.bottom - area.top) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        HDC memory = CreateCompatibleDC(nullptr);
        HGDIOBJ before = SelectObject(memory, bitmap);
        BitBlt(memory, 0, 0, width, height, source, area.left, area.top, SRCCOPY);
        SelectObject(memory, before);
        DeleteDC(memory);
        GdiFlush();
    }
    ~Copy() { DeleteObject(bitmap); }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;

    int width, height;
    HBITMAP bitmap;
    void* bits = nullptr;
};

bool write_png(HBITMAP bitmap, const std::string& path) {
    using namespace Gdiplus;
    using namespace Gdiplus::DllExports;
    constexpr CLSID kPng = {
        0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
    ULONG_PTR token = 0;
    const GdiplusStartupInput input;
    if (GdiplusStartup(&token, &input, nullptr) != Ok) {
        return false;
    }
    GpBitmap* picture = nullptr;
    bool done = GdipCreateBitmapFromHBITMAP(bitmap, nullptr, &picture) == Ok;
    if (done) {
        done = GdipSaveImageToFile(picture, wide(path).c_str(), &kPng, nullptr) == Ok;
        GdipDisposeImage(picture);
    }
    GdiplusShutdown(token);
    return done;
}

} // namespace

std::wstring wide(const std::string& text) {
    const int size = static_cast<int>(text.size());
    std::wstring result(text.size(), L'\0');
    result.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, text.data(), size, result.data(), size)));
    return result;
}

HWND newest_dialog() {
    HWND newest = nullptr;
    each_window([&](HWND window) {
        char name[16] = "";
        GetClassNameA(window, name, sizeof name);
        if (std::strcmp(name, "#32770") == 0) {
            newest = newer(window, newest);
        }
    });
    return newest;
}

HWND find_window(const std::string& title) {
    HWND newest = nullptr;
    each_window([&](HWND window) {
        if (title_of(window) == title) {
            newest = newer(window, newest);
        }
    });
    return newest;
}

int count_windows(const std::string& title) {
    int count = 0;
    each_window([&](HWND window) { count += title_of(window) == title ? 1 : 0; });
    return count;
}

std::vector<std::uint32_t> pixels(HWND window, const RECT& area) {
    HDC device = GetDC(window);
    const Copy copy(device, area);
    ReleaseDC(window, device);
    const auto* first = static_cast<const std::uint32_t*>(copy.bits);
    std::vector<std::uint32_t> all(first, first + std::ptrdiff_t{copy.width} * copy.height);
    for (std::uint32_t& pixel : all) {
        pixel |= 0xFF000000U;
    }
    return all;
}

COLORREF pixel(HWND window, int x, int y) {
    const std::uint32_t value = pixels(window, {x, y, x + 1, y + 1}).front();
    return RGB(value >> 16U & 0xFFU, value >> 8U & 0xFFU, value & 0xFFU);
}

std::string text(HWND window, int control) {
    char buffer[1024] = "";
    GetDlgItemTextA(window, control, buffer, sizeof buffer);
    return buffer;
}

bool checked(HWND window, int control) {
    return IsDlgButtonChecked(window, control) == BST_CHECKED;
}

int position(HWND dialog, int control) {
    return static_cast<int>(SendMessageA(GetDlgItem(dialog, control), TBM_GETPOS, 0, 0));
}

std::vector<std::string> menu_lines(HWND window) {
    std::vector<std::string> lines;
    HMENU bar = GetMenu(window);
    for (int i = 0; i < GetMenuItemCount(bar); ++i) {
        char label[128] = "";
        GetMenuStringA(bar, static_cast<UINT>(i), label, sizeof label, MF_BYPOSITION);
        lines.push_back(std::string(label) + ":");
        HMENU popup = GetSubMenu(bar, i);
        for (int k = 0; k < GetMenuItemCount(popup); ++k) {
            const UINT entry = static_cast<UINT>(k);
            const UINT state = GetMenuState(popup, entry, MF_BYPOSITION);
            GetMenuStringA(popup, entry, label, sizeof label, MF_BYPOSITION);
            if ((state & MF_SEPARATOR) != 0) {
                lines.emplace_back("-");
                continue;
            }
            std::string shown = label;
            if (const auto tab = shown.find('\t'); tab != std::string::npos) {
                shown.replace(tab, 1, " | ");
            }
            lines.push_back((state & MF_GRAYED) != 0 ? "[" + shown + "]" : shown);
        }
    }
    return lines;
}

std::string copied(const std::string& format) {
    if (!OpenClipboard(nullptr)) {
        return "";
    }
    std::string bytes;
    if (format == "text/plain") {
        HANDLE data = GetClipboardData(CF_TEXT);
        const void* text = data != nullptr ? GlobalLock(data) : nullptr;
        bytes = text != nullptr ? static_cast<const char*>(text) : "";
        GlobalUnlock(data);
    } else if (format == "image/x-emf") {
        auto* picture = static_cast<HENHMETAFILE>(GetClipboardData(CF_ENHMETAFILE));
        bytes.resize(GetEnhMetaFileBits(picture, 0, nullptr));
        GetEnhMetaFileBits(picture, static_cast<UINT>(bytes.size()),
                           reinterpret_cast<BYTE*>(bytes.data()));
    }
    CloseClipboard();
    return bytes;
}

bool programs_place_windows() {
    return true;
}

bool clipboard_forgets() {
    return true;
}

bool save_picture(HWND window, const std::string& path) {
    RECT outer{};
    GetWindowRect(window, &outer);
    HDC device = GetWindowDC(window);
    const Copy copy(device, {0, 0, outer.right - outer.left, outer.bottom - outer.top});
    ReleaseDC(window, device);
    return write_png(copy.bitmap, path);
}

} // namespace user
