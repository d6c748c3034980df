// The lines of a picture, computed beforehand: what is left of drawing them is the line walk alone.
#pragma once

#include "gdi/device_context.h"
#include "turtle/draw.h"

#include <cstdint>
#include <vector>

namespace pelmora_bench {

struct BareLine {
    POINT ends[2];
    std::uint32_t pixel; // what the layer writes for the pen's colour
};

// What draw_run() draws from this placement on, which it leaves behind it: half of the lines have
// no length.
std::vector<BareLine> lines_of(const pelmora::ExprNode* program, pelmora::DrawContext* placed);

// Those that have a length.
std::vector<BareLine> seen(std::vector<BareLine> lines);

// Walks them into an image.
void walk(const std::vector<BareLine>& lines, const platform::PixelView& pixels,
          const platform::PixelRect& clip);

} // namespace pelmora_bench
