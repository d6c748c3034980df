// Drawing calls on a device context.
#include "gdi/device_context.h"
#include "gdi/wide_line.h"

#include <QFontMetrics>
#include <QGuiApplication>

#include <algorithm>
#include <cstring>

namespace platform {

void fill(DeviceContext& device, const PixelRect& area, std::uint32_t pixel) {
    for (const PixelRect& clip : device.clip) {
        const PixelRect part = intersect(area, clip);
        if (part.empty()) {
            continue;
        }
        device.surface->text().cover(part);
        const PixelView& pixels = device.surface->pixels();
        std::uint32_t* row = pixels.bits + part.top * pixels.stride + part.left;
        for (int y = part.top; y < part.bottom; ++y, row += pixels.stride) {
            std::fill_n(row, part.right - part.left, pixel);
        }
    }
    device.touch(area);
}

namespace {

PixelRect area_of_line(int pen_width, const POINT& from, const POINT& to) {
    const int reach = pen_width / 2 + 2;
    return {std::min(from.x, to.x) - reach, std::min(from.y, to.y) - reach,
            std::max(from.x, to.x) + reach, std::max(from.y, to.y) + reach};
}

// Draws lines from point to point with the selected pen; does not use the current point.
void draw(DeviceContext& device, const POINT* points, int count) {
    for (const PixelRect& clip : device.clip) {
        if (device.pen_width <= 1) {
            draw_lines(device.surface->pixels(), clip, points, count, device.pen_color);
            continue;
        }
        for (int i = 1; i < count; ++i) {
            draw_wide_line(device.surface->pixels(), clip, points[i - 1].x, points[i - 1].y,
                           points[i].x, points[i].y, device.pen_width, device.pen_color);
        }
    }
    if (device.on_window && !device.painting) {
        for (int i = 1; i < count; ++i) {
            device.touch(area_of_line(device.pen_width, points[i - 1], points[i]));
        }
    }
}

// Copies into `area` of the target the pixels of the source at an offset of (dx, dy). Both areas
// lie in their images.
void copy_pixels(const PixelView& target, const PixelRect& area, const PixelView& source, int dx,
                 int dy) {
    const auto bytes = static_cast<std::size_t>(area.right - area.left) * sizeof(std::uint32_t);
    std::uint32_t* to = target.bits + area.top * target.stride + area.left;
    const std::uint32_t* from = source.bits + (area.top + dy) * source.stride + area.left + dx;
    for (int y = area.top; y < area.bottom; ++y, to += target.stride, from += source.stride) {
        std::memcpy(to, from, bytes);
    }
}

} // namespace

} // namespace platform

using namespace platform;

BOOL MoveToEx(HDC handle, int x, int y, POINT* previous) {
    DeviceContext* device = device_context(handle);
    if (device == nullptr) {
        return FALSE;
    }
    if (previous != nullptr) {
        *previous = {device->x, device->y};
    }
    if (device->output != nullptr) {
        device->output->move_to(x, y);
    }
    device->x = x;
    device->y = y;
    return TRUE;
}

BOOL LineTo(HDC handle, int x, int y) {
    DeviceContext* device = device_context(handle);
    if (device == nullptr) {
        return FALSE;
    }
    if (device->output != nullptr) {
        device->output->line_to(x, y);
    } else {
        const POINT ends[] = {{device->x, device->y}, {x, y}};
        draw(*device, ends, 2);
    }
    device->x = x;
    device->y = y;
    return TRUE;
}

BOOL Polyline(HDC handle, const POINT* points, int count) {
    DeviceContext* device = device_context(handle);
    if (device == nullptr || device->output != nullptr || count < 2) {
        return FALSE;
    }
    draw(*device, points, count);
    return TRUE;
}

int FillRect(HDC handle, const RECT* rect, HBRUSH brush) {
    DeviceContext* device = device_context(handle);
    if (device == nullptr || brush == nullptr || device->output != nullptr) {
        return 0;
    }
    fill(*device, pixel_rect(*rect), brush_pixel(brush));
    return 1;
}

int FrameRect(HDC handle, const RECT* rect, HBRUSH brush) {
    DeviceContext* device = device_context(handle);
    const PixelRect r = pixel_rect(*rect);
    if (device == nullptr || brush == nullptr || r.empty() || device->output != nullptr) {
        return 0;
    }
    const std::uint32_t pixel = brush_pixel(brush);
    fill(*device, {r.left, r.top, r.right, r.top + 1}, pixel);
    fill(*device, {r.left, r.bottom - 1, r.right, r.bottom}, pixel);
    fill(*device, {r.left, r.top, r.left + 1, r.bottom}, pixel);
    fill(*device, {r.right - 1, r.top, r.right, r.bottom}, pixel);
    return 1;
}

BOOL BitBlt(HDC target, int x, int y, int width, int height, HDC source, int source_x, int source_y,
            DWORD operation) {
    DeviceContext* to = device_context(target);
    const DeviceContext* from = device_context(source);
    if (to == nullptr || from == nullptr || operation != SRCCOPY || from->surface == nullptr ||
        to->output != nullptr) {
        return FALSE;
    }
    const int dx = source_x - x;
    const int dy = source_y - y;
    const PixelRect there = from->surface->bounds();
    const PixelRect area =
        intersect({x, y, x + width, y + height},
                  {there.left - dx, there.top - dy, there.right - dx, there.bottom - dy});
    for (const PixelRect& clip : to->clip) {
        const PixelRect part = intersect(area, clip);
        if (!part.empty()) {
            to->surface->text().cover(part);
            copy_pixels(to->surface->pixels(), part, from->surface->pixels(), dx, dy);
        }
    }
    to->touch(area);
    return TRUE;
}

BOOL RectVisible(HDC handle, const RECT* rect) {
    const DeviceContext* device = device_context(handle);
    return device != nullptr &&
           std::any_of(device->clip.begin(), device->clip.end(), [rect](const PixelRect& clip) {
               return !intersect(clip, pixel_rect(*rect)).empty();
           });
}

COLORREF GetPixel(HDC handle, int x, int y) {
    const DeviceContext* device = device_context(handle);
    const auto inside = [x, y](const PixelRect& clip) { return clip.contains(x, y); };
    if (device == nullptr || std::none_of(device->clip.begin(), device->clip.end(), inside)) {
        return CLR_INVALID;
    }
    const PixelView& pixels = device->surface->pixels();
    return color_of(pixels.bits[y * pixels.stride + x]);
}

int DrawTextA(HDC handle, LPCSTR text, int length, RECT* rect, UINT) {
    DeviceContext* device = device_context(handle);
    if (device == nullptr || !device->on_window || device->clip.empty()) {
        return 0;
    }
    const PixelRect area = pixel_rect(*rect);
    device->surface->text().add(QString::fromUtf8(text, length), area, device->clip);
    device->touch(area);
    return QFontMetrics(shrunk_to_height(QGuiApplication::font(), area.bottom - area.top)).height();
}
