// Draws lines more than one pixel wide into an image.
#pragma once

#include "gdi/line.h"

namespace platform {

// Draws the line from (x0, y0) to (x1, y1) with round ends, `width` (at least 2) pixels wide,
// clipped to `clip`, which must lie in the image. A line of length zero is a dot. The pixels are
// those of Windows: a disc at each end and between them a band with integer corners. Coordinates
// and widths saturate at 2^29.
void draw_wide_line(const PixelView& pixels, const PixelRect& clip, int x0, int y0, int x1, int y1,
                    int width, std::uint32_t color);

} // namespace platform
