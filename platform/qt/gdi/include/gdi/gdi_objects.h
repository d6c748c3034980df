// Pens, brushes and bitmaps.
#pragma once

#include "gdi/line.h"
#include "gdi/text.h"
#include "platform/win32.h"

#include <QImage>

namespace platform {

struct DeviceContext;

// An image that device contexts draw on. The pointer to its pixels is cached, as querying it for
// each line would be too slow. A surface without an image is empty; drawing on it does nothing.
class Surface {
  public:
    Surface() = default;
    explicit Surface(QImage image);
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    // Replaces the image. No painter may be active on the old one.
    void replace(QImage image);

    QImage& image() { return image_; }
    const PixelView& pixels() const { return pixels_; }
    TextLayer& text() { return text_; }
    PixelRect bounds() const { return {0, 0, image_.width(), image_.height()}; }

  private:
    QImage image_;
    PixelView pixels_{nullptr, 0};
    TextLayer text_;
};

enum class GdiKind { pen, brush, bitmap };

struct GdiObject {
    GdiKind kind;
    bool stock; // never deleted; DeleteObject does nothing

    GdiObject(GdiKind k, bool s) : kind(k), stock(s) {}
};

struct Pen : GdiObject {
    int width; // 0 and 1 are one pixel
    std::uint32_t color;

    Pen(int w, std::uint32_t c, bool s = false) : GdiObject(GdiKind::pen, s), width(w), color(c) {}
};

struct Brush : GdiObject {
    std::uint32_t color;

    explicit Brush(std::uint32_t c, bool s = false) : GdiObject(GdiKind::brush, s), color(c) {}
};

struct Bitmap : GdiObject {
    Surface surface;
    DeviceContext* holder = nullptr; // the device context it is selected into

    explicit Bitmap(QImage image) : GdiObject(GdiKind::bitmap, false), surface(std::move(image)) {}
};

// Conversion between COLORREF and 32-bit pixels.
constexpr std::uint32_t pixel_of(COLORREF color) {
    return 0xFF000000U | (color & 0xFFU) << 16U | (color & 0xFF00U) | (color >> 16U & 0xFFU);
}
constexpr COLORREF color_of(std::uint32_t pixel) {
    return (pixel & 0xFFU) << 16U | (pixel & 0xFF00U) | (pixel >> 16U & 0xFFU);
}

inline GdiObject* gdi_object(HGDIOBJ handle) {
    return static_cast<GdiObject*>(handle);
}
Pen* stock_pen();

// Releases a pen made by CreatePen(). False when the same pen was released just before.
bool release_pen(Pen* pen);

// The pixel value of a brush, or of a system colour + 1.
std::uint32_t brush_pixel(HBRUSH brush);

} // namespace platform
