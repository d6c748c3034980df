#include "platform/qt/device_context.h"

#include "platform/qt/window.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace platform {

void DeviceContext::clip_to_surface() {
    clip.clear();
    if (surface != nullptr && !surface->bounds().empty()) {
        clip.push_back(surface->bounds());
    }
}

void DeviceContext::clip_to(const QRegion& region) {
    clip.clear();
    const PixelRect bounds = surface->bounds();
    for (const QRect& part : region) {
        const PixelRect inside = intersect(
            {part.left(), part.top(), part.left() + part.width(), part.top() + part.height()},
            bounds);
        if (!inside.empty()) {
            clip.push_back(inside);
        }
    }
}

void DeviceContext::touch(const PixelRect& area) {
    if (window == nullptr) {
        return;
    }
    if (touched.empty()) {
        touched = area;
        return;
    }
    touched = {std::min(touched.left, area.left), std::min(touched.top, area.top),
               std::max(touched.right, area.right), std::max(touched.bottom, area.bottom)};
}

namespace {

void select_bitmap(DeviceContext& device, Bitmap* bitmap) {
    if (device.bitmap != nullptr) {
        device.bitmap->holder = nullptr;
    }
    device.bitmap = bitmap;
    device.surface = bitmap != nullptr ? &bitmap->surface : nullptr;
    if (bitmap != nullptr) {
        bitmap->holder = &device;
    }
    device.clip_to_surface();
}

// Puts what was drawn on a window's surface onto the screen.
void show_drawing(const DeviceContext& device) {
    const PixelRect area = intersect(device.touched, device.surface->bounds());
    if (!area.empty()) {
        device.window->show_surface(
            QRegion(area.left, area.top, area.right - area.left, area.bottom - area.top));
    }
}

} // namespace

} // namespace platform

using namespace platform;

HDC CreateCompatibleDC(HDC) {
    return handle_of(new (std::nothrow) DeviceContext);
}

BOOL DeleteDC(HDC handle) {
    DeviceContext* device = device_context(handle);
    if (device == nullptr) {
        return FALSE;
    }
    select_bitmap(*device, nullptr);
    delete device;
    return TRUE;
}

HDC GetDC(HWND handle) {
    auto device = std::unique_ptr<DeviceContext>(new (std::nothrow) DeviceContext);
    if (device == nullptr) {
        return nullptr;
    }
    if (handle != nullptr) { // null: the whole screen, on which nothing is drawn
        device->window = window_of(handle);
        if (device->window == nullptr) {
            SetLastError(ERROR_INVALID_WINDOW_HANDLE);
            return nullptr;
        }
        device->surface = &device->window->surface();
        device->window->open(device.get());
        device->clip_to_surface();
    }
    return handle_of(device.release());
}

int ReleaseDC(HWND, HDC handle) {
    const std::unique_ptr<DeviceContext> device(device_context(handle));
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

namespace platform {

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

BOOL EndPaint(HWND handle, const PAINTSTRUCT* paint) {
    ReleaseDC(handle, paint->hdc);
    return TRUE;
}

HGDIOBJ SelectObject(HDC handle, HGDIOBJ selected) {
    DeviceContext* device = device_context(handle);
    GdiObject* object = gdi_object(selected);
    if (device == nullptr || object == nullptr) {
        return nullptr;
    }
    if (object->kind == GdiKind::pen) {
        const auto* pen = static_cast<const Pen*>(object);
        device->pen_width = pen->width;
        device->pen_color = pen->color;
        if (device->output != nullptr) {
            device->output->select_pen(pen);
        }
        return std::exchange(device->pen, object);
    }
    if (object->kind == GdiKind::bitmap) {
        auto* bitmap = static_cast<Bitmap*>(object);
        if (device->window != nullptr || device->output != nullptr ||
            (bitmap->holder != nullptr && bitmap->holder != device)) {
            return nullptr; // memory device contexts only, and one at a time
        }
        GdiObject* previous = device->bitmap;
        select_bitmap(*device, bitmap);
        return previous;
    }
    return nullptr; // a brush is named by each call that fills
}

HGDIOBJ GetCurrentObject(HDC handle, UINT kind) {
    const DeviceContext* device = device_context(handle);
    return device != nullptr && kind == OBJ_PEN ? device->pen : nullptr;
}

int SetMapMode(HDC handle, int mode) {
    const DeviceContext* device = device_context(handle);
    if (device == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    const int before = device->output != nullptr ? device->output->set_map_mode(mode)
                       : mode == MM_TEXT         ? MM_TEXT
                                                 : 0;
    if (before == 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
    }
    return before;
}

int GetDeviceCaps(HDC handle, int index) {
    const DeviceContext* device = device_context(handle);
    if (device != nullptr && device->output != nullptr) {
        return device->output->caps(index);
    }
    const QSize screen = QGuiApplication::primaryScreen()->size();
    switch (index) {
    case HORZRES:
        return screen.width();
    case VERTRES:
        return screen.height();
    default:
        return 0;
    }
}

int SetStretchBltMode(HDC handle, int mode) {
    DeviceContext* device = device_context(handle);
    return device != nullptr ? std::exchange(device->stretch_mode, mode) : 0;
}
