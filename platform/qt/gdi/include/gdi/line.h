// Draws lines one pixel wide into an image.
#pragma once

#include "platform/win32.h"

#include <cstddef>
#include <cstdint>

namespace platform {

// Pixels left to right - 1, top to bottom - 1.
struct PixelRect {
    int left, top, right, bottom;

    bool empty() const { return left >= right || top >= bottom; }
    bool contains(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
};

PixelRect intersect(const PixelRect& a, const PixelRect& b);

// Borrowed 32-bit pixels; a row begins `stride` pixels after the one above.
struct PixelView {
    std::uint32_t* bits;
    std::ptrdiff_t stride;
};

// Draws lines from point to point, each without its end point, clipped to `clip`, which must lie in
// the image. The pixels are those of Windows: one per step along the major axis, with the exact
// minor coordinate rounded and halves rounded down. Coordinates saturate at 2^29. `count` is 1 or
// more.
void draw_lines(const PixelView& pixels, const PixelRect& clip, const POINT* points, int count,
                std::uint32_t color);

} // namespace platform
