#include "platform/qt/window.h"

#include "platform/qt/controls.h"
#include "platform/qt/device_context.h"
#include "platform/qt/dialog.h"
#include "platform/qt/message_loop.h"

#include <QPainter>

#include <algorithm>
#include <cstring>
#include <map>
#include <new>

namespace platform {

namespace {

// Ordered by handle, so that windows are painted in the order of their creation. Never destroyed:
// at the end of the process the system takes windows away without a message.
using Registry = std::map<HWND, std::shared_ptr<Window>>;

Registry& registry() {
    static Registry& windows = *new Registry;
    return windows;
}

// Handles are numbers that are not used again, so that a stale one is recognised.
HWND next_handle() {
    static std::uintptr_t last = 0x10000;
    last += 2;
    return reinterpret_cast<HWND>(last);
}

// Throws where there is no memory for it.
QImage new_image(QSize size, std::uint32_t background) {
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull() && !size.isEmpty()) {
        throw std::bad_alloc();
    }
    image.fill(background);
    return image;
}

} // namespace

Window::Window() : handle_(next_handle()) {}

Window::~Window() {
    for (DeviceContext* device : devices_) {
        device->window = nullptr;
        device->surface = nullptr;
        device->clip.clear();
    }
}

void Window::invalidate(const QRegion& region, bool erase) {
    if (!paints()) {
        widget()->update(region);
        return;
    }
    update_.region += region & QRect(QPoint(0, 0), client_size());
    update_.erase = update_.erase || erase;
}

bool Window::wants_paint() const {
    return !update_.region.isEmpty() && widget()->isVisible() && !widget()->isMinimized();
}

Window::Update Window::take_update() {
    return std::exchange(update_, Update());
}

// Without memory for what a window shows the process ends here, as it does elsewhere: an exception
// could not go up through the toolkit.
void Window::resize_surface(QSize size, std::uint32_t background) noexcept {
    // A window larger than any wall stays white, rather than taking all memory.
    constexpr qint64 kMostPixels = qint64{1} << 27;
    QImage image;
    if (qint64{size.width()} * size.height() <= kMostPixels) {
        image = new_image(size, background);
    }
    if (!image.isNull()) {
        QPainter painter(&image);
        painter.drawImage(0, 0, surface_.image());
    }
    surface_.replace(std::move(image));
    update_.region &= QRect(QPoint(0, 0), size);
    for (DeviceContext* device : devices_) {
        device->clip_to_surface();
    }
}

Window* window_of(HWND handle) {
    const auto found = registry().find(handle);
    return found != registry().end() ? found->second.get() : nullptr;
}

void keep_window(std::shared_ptr<Window> window) {
    registry().emplace(window->handle(), std::move(window));
}

void forget_window(HWND handle) {
    forget_messages(handle);
    registry().erase(handle);
}

void destroy_window(Window& window) {
    const std::shared_ptr<Window> alive = window.shared_from_this();
    destroy_owned_dialogs(window);
    send_message(window.handle(), WM_DESTROY, 0, 0);
    if (const Controls* controls = window.controls()) {
        controls->forget();
    }
    send_message(window.handle(), WM_NCDESTROY, 0, 0);
    forget_window(window.handle());
    window.dismantle();
    post(nullptr, WM_NULL, 0, 0); // the loop of a dialog over this window may be asleep
}

Window* next_window_to_paint() {
    for (const auto& [handle, window] : registry()) {
        if (window->wants_paint()) {
            return window.get();
        }
    }
    return nullptr;
}

Window* window_of_widget(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        for (const auto& [handle, window] : registry()) {
            if (window->widget() == widget) {
                return window.get();
            }
        }
    }
    return nullptr;
}

HWND desktop_handle() {
    static const HWND handle = next_handle();
    return handle;
}

LRESULT send_message(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
    Window* window = window_of(handle);
    if (window == nullptr) {
        return 0;
    }
    const std::shared_ptr<Window> alive = window->shared_from_this();
    const Window::Subclass& front = alive->subclass;
    return front.procedure != nullptr
               ? front.procedure(handle, message, wparam, lparam, front.id, front.data)
               : alive->receive(message, wparam, lparam);
}

namespace {

// The bytes of a window's own at `index`, or null when they are not all there.
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
    destroy_window(*window);
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
