#include "gdi/gdi_objects.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <new>
#include <utility>

namespace platform {

namespace {

constexpr std::uint32_t kBlack = pixel_of(RGB(0, 0, 0));
constexpr std::uint32_t kWhite = pixel_of(RGB(255, 255, 255));

// A cache of one: the pen released last. A picture creates a pen for each change of colour.
Pen* spare_pen = nullptr;

// A brush handle below this is a system colour + 1.
constexpr std::uintptr_t kSystemColors = 64;

} // namespace

Surface::Surface(QImage image) {
    replace(std::move(image));
}

void Surface::replace(QImage image) {
    image_ = std::move(image);
    if (image_.isNull()) {
        pixels_ = {nullptr, 0};
        return;
    }
    // bits() detaches, so other copies of the image stay unchanged.
    pixels_ = {reinterpret_cast<std::uint32_t*>(image_.bits()), image_.bytesPerLine() / 4};
}

Pen* stock_pen() {
    static Pen black(0, kBlack, true);
    return &black;
}

bool release_pen(Pen* pen) {
    if (pen == spare_pen) {
        return false;
    }
#ifdef PELMORA_SANITIZE // so that the sanitizers detect use after release
    delete pen;
#else
    delete std::exchange(spare_pen, pen);
#endif
    return true;
}

std::uint32_t brush_pixel(HBRUSH brush) {
    // COLOR_WINDOW is the only system colour in use. Windows keeps it white even in dark mode; on a
    // desktop's dark base colour the selection's black frame would not be visible.
    if (reinterpret_cast<std::uintptr_t>(brush) < kSystemColors) {
        return kWhite;
    }
    return reinterpret_cast<const Brush*>(brush)->color;
}

} // namespace platform

using namespace platform;

HGDIOBJ GetStockObject(int object) {
    static Brush white(kWhite, true);
    static Brush black(kBlack, true);
    switch (object) {
    case WHITE_BRUSH:
        return static_cast<GdiObject*>(&white);
    case BLACK_BRUSH:
        return static_cast<GdiObject*>(&black);
    case BLACK_PEN:
        return static_cast<GdiObject*>(stock_pen());
    default:
        return nullptr;
    }
}

HPEN CreatePen(int, int width, COLORREF color) {
    const Pen pen(std::abs(std::max(width, -INT_MAX)), pixel_of(color));
    Pen* made = std::exchange(spare_pen, nullptr);
    if (made != nullptr) {
        *made = pen;
    } else {
        made = new (std::nothrow) Pen(pen);
    }
    return reinterpret_cast<HPEN>(static_cast<GdiObject*>(made));
}

HBRUSH CreateSolidBrush(COLORREF color) {
    return reinterpret_cast<HBRUSH>(
        static_cast<GdiObject*>(new (std::nothrow) Brush(pixel_of(color))));
}

HBITMAP CreateCompatibleBitmap(HDC device, int width, int height) {
    if (device == nullptr || width <= 0 || height <= 0) {
        return nullptr;
    }
    QImage image(width, height, QImage::Format_RGB32);
    if (image.isNull()) {
        return nullptr;
    }
    image.fill(kBlack);
    auto* bitmap = new (std::nothrow) Bitmap(std::move(image));
    return reinterpret_cast<HBITMAP>(static_cast<GdiObject*>(bitmap));
}
