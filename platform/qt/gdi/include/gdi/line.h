// Lines one pixel wide, straight into an image.
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

// 32-bit pixels; a row begins `stride` pixels after the one above. Borrowed.
struct PixelView {
    std::uint32_t* bits;
    std::ptrdiff_t stride;
};

// Draws lines from point to point, each without its end point, as far as they lie in `clip`, which
// must lie in the image. The pixels are those of Windows: along the major axis one pixel a step,
// the other coordinate the exact one rounded, a half toward the smaller coordinate. Coordinates
// beyond 2^29 are taken as 2^29. `count` is 1 or more.
void draw_lines(const PixelView& pixels, const PixelRect& clip, const POINT* points, int count,
                std::uint32_t color);

} // namespace platform
