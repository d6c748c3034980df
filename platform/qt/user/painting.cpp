#include "user/painting.h"

#include <memory>
#include <new>

namespace platform {

namespace {

// Schedules the drawn part of a window's surface to be shown on the screen.
void show_drawing(const WindowContext& device) {
    const PixelRect area = intersect(device.touched, device.surface->bounds());
    if (!area.empty()) {
        device.window->show_surface(
            QRegion(area.left, area.top, area.right - area.left, area.bottom - area.top));
    }
}

} // namespace

void erase_now(Window& window) {
    if (!window.wants_paint()) {
        return;
    }
    const HWND handle = window.handle();
    const Window::Update update = window.take_update();
    if (update.erase) {
        HDC device = GetDC(handle);
        if (device != nullptr) {
            device_context(device)->clip_to(update.region);
            SendMessageA(handle, WM_ERASEBKGND, reinterpret_cast<WPARAM>(device), 0);
            ReleaseDC(handle, device);
        }
    }
    if (IsWindow(handle)) {
        window.invalidate(update.region, false);
    }
}

} // namespace platform

using namespace platform;

HDC GetDC(HWND handle) {
    auto device = std::unique_ptr<WindowContext>(new (std::nothrow) WindowContext);
    if (device == nullptr) {
        return nullptr;
    }
    if (handle != nullptr) { // null: the whole screen, which cannot be drawn on
        device->window = window_of(handle);
        if (device->window == nullptr) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return nullptr;
        }
        device->surface = &device->window->surface();
        device->on_window = true;
        device->window->open(device.get());
        device->clip_to_surface();
    }
    return handle_of(device.release());
}

int ReleaseDC(HWND, HDC handle) {
    const std::unique_ptr<WindowContext> device(
        dynamic_cast<WindowContext*>(device_context(handle)));
    if (device == nullptr) {
        return 0;
    }
    if (device->window != nullptr) {
        device->window->close(device.get());
        show_drawing(*device);
    }
    return 1;
}

HDC BeginPaint(HWND handle, PAINTSTRUCT* paint) {
    *paint = {};
    Window* window = window_of(handle);
    paint->hdc = window != nullptr ? GetDC(handle) : nullptr;
    if (paint->hdc == nullptr) {
        return nullptr;
    }
    DeviceContext* device = device_context(paint->hdc);
    const Window::Update update = window->take_update();
    device->painting = true;
    device->clip_to(update.region);
    const QRect bounds = update.region.boundingRect();
    paint->rcPaint = {bounds.left(), bounds.top(), bounds.left() + bounds.width(),
                      bounds.top() + bounds.height()};
    device->touched = pixel_rect(paint->rcPaint);
    if (update.erase) {
        paint->fErase =
            SendMessageA(handle, WM_ERASEBKGND, reinterpret_cast<WPARAM>(paint->hdc), 0) == 0;
    }
    return paint->hdc;
}

BOOL EndPaint(HWND handle, const PAINTSTRUCT* paint) {
    ReleaseDC(handle, paint->hdc);
    return TRUE;
}
