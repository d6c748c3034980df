#include "user/window.h"

#include <QPainter>

#include <map>
#include <new>
#include <utility>

namespace platform {

namespace {

// Ordered by handle, so that windows are painted in the order of their creation. Never destroyed:
// as on Windows, windows get no message when the process ends.
using Registry = std::map<HWND, std::shared_ptr<Window>>;

Registry& registry() {
    static Registry& windows = *new Registry;
    return windows;
}

// Handles are numbers and are never reused, so that a stale one is recognised.
HWND next_handle() {
    static std::uintptr_t last = 0x10000;
    last += 2;
    return reinterpret_cast<HWND>(last);
}

// Throws std::bad_alloc.
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
    for (WindowContext* device : devices_) {
        device->window = nullptr;
        device->surface = nullptr;
        device->on_window = false;
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

// noexcept: when memory runs out the process ends here, as an exception must not pass through the
// toolkit.
void Window::resize_surface(QSize size, std::uint32_t background) noexcept {
    // A larger window gets no image and stays white; 2^27 pixels are 512 MB.
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
    for (WindowContext* device : devices_) {
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
    registry().erase(handle);
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

} // namespace platform
