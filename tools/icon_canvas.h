// A turtle program as an icon: its strokes, drawn as large as the icon allows, and their pixels.
#pragma once

#include "model/expr.h"
#include "platform/win32.h"

#include <cstdint>
#include <vector>

namespace icon {

struct Stroke {
    POINT from, to;
    COLORREF color;
};

struct Canvas {
    int side;      // of the square that holds the drawing
    int pen_width; // in the same units
    std::vector<Stroke> strokes;
};

// The program's strokes in the middle of a square, which they fill with their width. The pen is
// this part of the side.
Canvas strokes_of(const pelmora::ExprNode* program, int side, int pen_percent);

// The square of size * size pixels, the top row first, as 0xAARRGGBB, smoothed.
std::vector<std::uint32_t> pixels_of(const pelmora::ExprNode* program, int size);

} // namespace icon
