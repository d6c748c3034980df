#include "gdi/line.h"

#include <algorithm>
#include <cstdlib>

namespace platform {

namespace {

// Keeps every product of the walk below within 64 bits.
constexpr int kFarthest = 1 << 29;

std::int64_t floor_div(std::int64_t a, std::int64_t b) {
    return a / b - (a % b != 0 && (a < 0) != (b < 0) ? 1 : 0);
}

// A line stepped along its major (longer) axis: each pixel is one step further on the major axis
// and some pixels are one step (`drift`) further on the minor axis. Up to pixel k there are
// floor((2 * dy * k + dx - bias) / (2 * dx)) minor steps.
struct Walk {
    std::int64_t dx, dy, bias;

    std::int64_t minor_steps(std::int64_t k) const {
        return floor_div(2 * dy * k + dx - bias, 2 * dx);
    }
    // The first pixel with at least `times` minor steps; dy must not be 0.
    std::int64_t first_with(std::int64_t times) const {
        return -floor_div(-(2 * dx * times - dx + bias), 2 * dy);
    }
};

struct Span {
    std::int64_t first, last; // last excluded
};

// The pixels whose coordinate start + step * k lies in [low, high).
Span clip_major(std::int64_t count, int start, int step, int low, int high) {
    const std::int64_t first = step > 0 ? low - start : start - high + 1;
    const std::int64_t last = step > 0 ? high - start : start - low + 1;
    return {std::max<std::int64_t>(first, 0), std::min(last, count)};
}

// Narrows `span` to the pixels whose coordinate start + drift * minor_steps(k) lies in [low, high).
Span clip_minor(Span span, const Walk& walk, int start, int drift, int low, int high) {
    const std::int64_t least = drift > 0 ? low - start : start - high + 1;
    const std::int64_t most = drift > 0 ? high - start : start - low + 1; // excluded
    if (walk.dy == 0) {
        return least <= 0 && most > 0 ? span : Span{0, 0};
    }
    return {std::max(span.first, walk.first_with(least)),
            std::min(span.last, walk.first_with(most))};
}

// A line between two pixels as a walk with its directions.
struct Line {
    Walk walk;
    bool steep; // y is the major axis
    int sx, sy; // directions
};

Line line_between(int x0, int y0, int x1, int y1) {
    const int sx = x1 < x0 ? -1 : 1;
    const int sy = y1 < y0 ? -1 : 1;
    const int width = std::abs(x1 - x0);
    const int height = std::abs(y1 - y0);
    const bool steep = height >= width;
    const int drift = steep ? sx : sy;
    return {{std::max(width, height), std::min(width, height), drift > 0 ? 1 : 0}, steep, sx, sy};
}

// Writes the pixels of the span, all of which lie in the image. The line starts at (x0, y0).
void put(const PixelView& pixels, int x0, int y0, const Line& line, const Span& span,
         std::uint32_t color) {
    const Walk& walk = line.walk;
    const std::int64_t steps = span.first == 0 ? 0 : walk.minor_steps(span.first);
    const std::ptrdiff_t x_step = line.sx;
    const std::ptrdiff_t y_step = line.sy * pixels.stride;
    const std::ptrdiff_t major_step = line.steep ? y_step : x_step;
    const std::ptrdiff_t minor_step = line.steep ? x_step : y_step;
    // One offset is computed first, as the line may start far outside the image.
    std::uint32_t* pixel =
        pixels.bits + (y0 * pixels.stride + x0 + major_step * span.first + minor_step * steps);
    std::int64_t error = 2 * walk.dy * (span.first + 1) - walk.dx - walk.bias - 2 * walk.dx * steps;
    for (std::int64_t k = span.first;;) {
        *pixel = color;
        if (++k == span.last) {
            return; // before `pixel` could leave the image
        }
        // Without a branch: in short lines it would not be predicted.
        const std::int64_t minor_mask = ~(error >> 63);
        pixel += major_step + (minor_step & minor_mask);
        error += 2 * walk.dy - (2 * walk.dx & minor_mask);
    }
}

void draw_clipped(const PixelView& pixels, const PixelRect& clip, const POINT& from,
                  const POINT& to, std::uint32_t color) {
    const auto bounded = [](int coordinate) {
        return std::clamp(coordinate, -kFarthest, kFarthest);
    };
    const int x0 = bounded(from.x);
    const int y0 = bounded(from.y);
    const Line line = line_between(x0, y0, bounded(to.x), bounded(to.y));
    const Walk& walk = line.walk;
    if (clip.empty() || walk.dx == 0) {
        return;
    }
    Span span = line.steep ? clip_major(walk.dx, y0, line.sy, clip.top, clip.bottom)
                           : clip_major(walk.dx, x0, line.sx, clip.left, clip.right);
    span = line.steep ? clip_minor(span, walk, x0, line.sx, clip.left, clip.right)
                      : clip_minor(span, walk, y0, line.sy, clip.top, clip.bottom);
    if (span.first < span.last) {
        put(pixels, x0, y0, line, span, color);
    }
}

} // namespace

PixelRect intersect(const PixelRect& a, const PixelRect& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

void draw_lines(const PixelView& pixels, const PixelRect& clip, const POINT* points, int count,
                std::uint32_t color) {
    for (const POINT* from = points; from != points + count - 1; ++from) {
        const POINT& to = from[1];
        if (clip.contains(from->x, from->y) && clip.contains(to.x, to.y)) {
            const Line line = line_between(from->x, from->y, to.x, to.y);
            if (line.walk.dx != 0) {
                put(pixels, from->x, from->y, line, {0, line.walk.dx}, color);
            }
        } else {
            draw_clipped(pixels, clip, *from, to, color);
        }
    }
}

} // namespace platform
