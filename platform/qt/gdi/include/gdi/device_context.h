// Device contexts: the target and the state of drawing calls.
#pragma once

#include "gdi/gdi_objects.h"

#include <QRegion>

#include <memory>
#include <vector>

namespace platform {

// The target of a device context without a surface: a metafile or a printer.
class DeviceOutput {
  public:
    DeviceOutput();
    virtual ~DeviceOutput();
    DeviceOutput(const DeviceOutput&) = delete;
    DeviceOutput& operator=(const DeviceOutput&) = delete;

    virtual void move_to(int x, int y) = 0;
    virtual void line_to(int x, int y) = 0;
    virtual void select_pen(const GdiObject* pen) = 0;
    virtual int set_map_mode(int mode) = 0; // the previous mode; 0 when `mode` is not supported
    virtual int caps(int index) const = 0;

    // Called when any pen is deleted, selected here or not.
    virtual void forget_pen(const GdiObject*) {}
};

struct DeviceContext {
    DeviceContext() = default;
    virtual ~DeviceContext() = default;
    DeviceContext(const DeviceContext&) = delete;
    DeviceContext& operator=(const DeviceContext&) = delete;

    Surface* surface = nullptr; // borrowed from a window or the selected bitmap; null: none
    bool on_window = false;     // the screen is updated when the device context is released
    std::unique_ptr<DeviceOutput> output; // if set, `surface` is null
    Bitmap* bitmap = nullptr;             // selected; memory device contexts only
    bool painting = false;                // between BeginPaint and EndPaint
    int stretch_mode = 1;

    // The selected pen and a copy of its data: a pen deleted while selected remains in effect.
    GdiObject* pen = stock_pen();
    int pen_width = 0;
    std::uint32_t pen_color = stock_pen()->color;

    int x = 0, y = 0; // the current point

    // The clip region: disjoint rectangles inside the surface, nearly always one.
    std::vector<PixelRect> clip;

    // The part of a window's surface that was drawn on and is not yet on the screen.
    PixelRect touched{0, 0, 0, 0};

    void clip_to_surface();
    void clip_to(const QRegion& region);
    void touch(const PixelRect& area);
};

inline DeviceContext* device_context(HDC handle) {
    return reinterpret_cast<DeviceContext*>(handle);
}
inline HDC handle_of(DeviceContext* context) {
    return reinterpret_cast<HDC>(context);
}

inline PixelRect pixel_rect(const RECT& r) {
    return {r.left, r.top, r.right, r.bottom};
}

// Fills `area` with one pixel value, clipped.
void fill(DeviceContext& device, const PixelRect& area, std::uint32_t pixel);

} // namespace platform
