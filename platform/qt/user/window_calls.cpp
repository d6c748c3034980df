// Calls on window handles.
#include "user/message_loop.h"
#include "user/window.h"

#include <cstring>

namespace platform {

namespace {

// In this order: its dialogs, WM_DESTROY, its controls' handles, WM_NCDESTROY, its own handle.
void destroy(Window& window) {
    const std::shared_ptr<Window> alive = window.shared_from_this();
    for (const HWND dialog : std::vector<HWND>(window.dialogs())) {
        DestroyWindow(dialog);
    }
    send_message(window.handle(), WM_DESTROY, 0, 0);
    window.forget_children();
    send_message(window.handle(), WM_NCDESTROY, 0, 0);
    forget_window(window.handle());
    window.dismantle();
    post(nullptr, WM_NULL, 0, 0); // wakes the loop of a dialog over this window
}

// A window's extra bytes from `index` on; null when a LONG_PTR does not fit there.
std::byte* own_bytes(HWND handle, int index) {
    Window* window = window_of(handle);
    if (window == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    const auto start = static_cast<std::size_t>(index);
    if (index < 0 || start + sizeof(LONG_PTR) > window->extra().size()) {
        SetLastError(ERROR_INVALID_INDEX);
        return nullptr;
    }
    return window->extra().data() + start;
}

QRect rect_of(const RECT* rect) {
    return {rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top};
}

} // namespace

} // namespace platform

using namespace platform;

BOOL DestroyWindow(HWND handle) {
    Window* window = window_of(handle);
    if (window == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    destroy(*window);
    return TRUE;
}

BOOL IsWindow(HWND handle) {
    return window_of(handle) != nullptr;
}

LONG_PTR GetWindowLongPtrA(HWND handle, int index) {
    LONG_PTR value = 0;
    if (const std::byte* bytes = own_bytes(handle, index)) {
        std::memcpy(&value, bytes, sizeof value);
    }
    return value;
}

LONG_PTR SetWindowLongPtrA(HWND handle, int index, LONG_PTR value) {
    LONG_PTR previous = 0;
    if (std::byte* bytes = own_bytes(handle, index)) {
        std::memcpy(&previous, bytes, sizeof previous);
        std::memcpy(bytes, &value, sizeof value);
    }
    return previous;
}

BOOL UpdateWindow(HWND handle) {
    Window* window = window_of(handle);
    if (window != nullptr && window->wants_paint()) {
        send_message(handle, WM_PAINT, 0, 0);
    }
    return window != nullptr;
}

BOOL RedrawWindow(HWND handle, const RECT* rect, void*, UINT flags) {
    Window* window = window_of(handle);
    if (window == nullptr) {
        return FALSE;
    }
    if ((flags & RDW_INVALIDATE) != 0) {
        window->invalidate(rect != nullptr ? rect_of(rect)
                                           : QRect(QPoint(0, 0), window->client_size()),
                           (flags & RDW_ERASE) != 0);
    }
    return TRUE;
}

BOOL InvalidateRect(HWND handle, const RECT* rect, BOOL erase) {
    return RedrawWindow(handle, rect, nullptr,
                        erase != FALSE ? RDW_INVALIDATE | RDW_ERASE : RDW_INVALIDATE);
}

BOOL SetWindowSubclass(HWND handle, SUBCLASSPROC procedure, UINT_PTR id, DWORD_PTR data) {
    Window* window = window_of(handle);
    if (window != nullptr) {
        window->subclass = {procedure, id, data};
    }
    return window != nullptr;
}

LRESULT DefSubclassProc(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
    Window* window = window_of(handle);
    if (window == nullptr) {
        return 0;
    }
    const std::shared_ptr<Window> alive = window->shared_from_this();
    return alive->receive(message, wparam, lparam);
}

LRESULT SendMessageA(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
    return send_message(handle, message, wparam, lparam);
}

BOOL GetClientRect(HWND handle, RECT* rect) {
    const Window* window = window_of(handle);
    if (window == nullptr) {
        return FALSE;
    }
    *rect = {0, 0, window->client_size().width(), window->client_size().height()};
    return TRUE;
}

HWND GetDesktopWindow() {
    return desktop_handle();
}
