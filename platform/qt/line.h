// Lines one pixel wide, straight into an image.
#pragma once

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

// Draws the line from (x0, y0) to (x1, y1) without its end point, as far as it lies in `clip`,
// which must lie in the image. The pixels are those of Windows: along the major axis one pixel a
// step, the other coordinate the exact one rounded, a half toward the smaller coordinate.
// Coordinates beyond 2^29 are taken as 2^29.
void draw_line(const PixelView& pixels, const PixelRect& clip, int x0, int y0, int x1, int y1,
               std::uint32_t color);

} // namespace platform
