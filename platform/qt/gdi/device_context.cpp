#include "gdi/device_context.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace platform {

namespace {

// All open outputs; nearly always none or one.
std::vector<DeviceOutput*>& outputs() {
    static std::vector<DeviceOutput*> open;
    return open;
}

} // namespace

DeviceOutput::DeviceOutput() {
    outputs().push_back(this);
}

DeviceOutput::~DeviceOutput() {
    std::erase(outputs(), this);
}

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
    if (!on_window) {
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
        if (device->on_window || device->output != nullptr ||
            (bitmap->holder != nullptr && bitmap->holder != device)) {
            return nullptr; // a bitmap may be selected into one memory device context only
        }
        GdiObject* previous = device->bitmap;
        select_bitmap(*device, bitmap);
        return previous;
    }
    return nullptr; // brushes are parameters of the calls that fill
}

BOOL DeleteObject(HGDIOBJ handle) {
    GdiObject* object = gdi_object(handle);
    if (object == nullptr) {
        return FALSE;
    }
    if (object->stock) {
        return TRUE;
    }
    switch (object->kind) {
    case GdiKind::pen:
        for (DeviceOutput* output : outputs()) {
            output->forget_pen(object);
        }
        return release_pen(static_cast<Pen*>(object));
    case GdiKind::brush:
        delete static_cast<Brush*>(object);
        return TRUE;
    case GdiKind::bitmap:
        break;
    }
    auto* bitmap = static_cast<Bitmap*>(object);
    if (bitmap->holder != nullptr) {
        return FALSE;
    }
    delete bitmap;
    return TRUE;
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
