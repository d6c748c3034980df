#include "gdi/wide_line.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace platform {

namespace {

// Keeps every product below within 64 bits.
constexpr int kFarthest = 1 << 29;

struct Place {
    std::int64_t x, y;
};

// The clipped drawing target, filled row by row.
struct Target {
    const PixelView& pixels;
    const PixelRect& clip;
    std::uint32_t color;

    // Clips the rows [first, last).
    std::int64_t first_row(std::int64_t first) const {
        return std::max<std::int64_t>(first, clip.top);
    }
    std::int64_t last_row(std::int64_t last) const {
        return std::min<std::int64_t>(last, clip.bottom);
    }
    // Fills the pixels from `first` to `last` - 1 of row y, which must be in the clip.
    void fill(std::int64_t y, std::int64_t first, std::int64_t last) const {
        first = std::max<std::int64_t>(first, clip.left);
        last = std::min<std::int64_t>(last, clip.right);
        if (first < last) {
            std::fill_n(pixels.bits + y * pixels.stride + first, last - first, color);
        }
    }
};

std::int64_t ceil_div(std::int64_t a, std::int64_t b) { // b > 0
    return a / b + (a % b > 0 ? 1 : 0);
}

// The largest integer whose square is less than n; n > 0.
std::int64_t root_below(std::int64_t n) {
    auto root = static_cast<std::int64_t>(std::sqrt(static_cast<double>(n)));
    while (root * root >= n) {
        --root;
    }
    while ((root + 1) * (root + 1) < n) {
        ++root;
    }
    return root;
}

// Half the width of a disc in the row at distance y from its centre. All distances are doubled, as
// the centre may lie between two pixels. A pixel at the distances a <= b is in the disc when it
// lies, moved half a pixel inward along b, within the circle through the outermost pixels. The
// middle column always belongs to the disc.
std::int64_t disc_reach(std::int64_t outermost, std::int64_t y) {
    const auto at_pixel = [outermost](std::int64_t x) { return x - ((x ^ outermost) & 1); };
    const std::int64_t square = outermost * outermost;
    if (const std::int64_t left = square - y * y; left > 0) {
        const std::int64_t x = at_pixel(root_below(left) + 1);
        if (x > y) {
            return x;
        }
    }
    const std::int64_t x = at_pixel(root_below(square - (y - 1) * (y - 1)));
    return std::clamp(x, outermost & 1, y);
}

void draw_disc(const Target& target, Place middle, std::int64_t width) {
    const std::int64_t left = middle.x - width / 2;
    const std::int64_t top = middle.y - width / 2;
    const std::int64_t outermost = width - 1;
    const std::int64_t last = target.last_row(top + width);
    for (std::int64_t y = target.first_row(top); y < last; ++y) {
        const std::int64_t reach = disc_reach(outermost, std::abs(2 * (y - top) - outermost));
        target.fill(y, left + (outermost - reach) / 2, left + (outermost + reach) / 2 + 1);
    }
}

// The extent of a band's side along one axis, for a line of length `length` that extends `extent`
// along the other axis. A slanted side is rounded up, by at most one pixel.
std::int64_t band_side(std::int64_t width, std::int64_t extent, double length) {
    const double exact = static_cast<double>(width * extent) / length;
    return extent == 0 ? 0 : std::min(width, static_cast<std::int64_t>(exact) + 1);
}

using Corners = std::array<Place, 4>;

Corners band_corners(Place from, Place to, std::int64_t width) {
    const std::int64_t dx = to.x - from.x;
    const std::int64_t dy = to.y - from.y;
    const double length = std::sqrt(static_cast<double>(dx * dx + dy * dy));
    const std::int64_t across = band_side(width, std::abs(dy), length);
    const std::int64_t down = band_side(width, std::abs(dx), length);
    // The extra pixel of an odd width is on the right side, or below a horizontal line.
    const std::int64_t turn = dx != 0 && dy != 0 && (dx > 0) == (dy > 0) ? -1 : 1;
    const Place right{(across + 1) / 2, turn * ((down + 1) / 2)};
    const Place left{-(across / 2), -turn * (down / 2)};
    return {{{from.x + right.x, from.y + right.y},
             {to.x + right.x, to.y + right.y},
             {to.x + left.x, to.y + left.y},
             {from.x + left.x, from.y + left.y}}};
}

bool above(const Place& a, const Place& b) {
    return a.y < b.y;
}

// Fills each row from the left edge, included, to the right edge, excluded.
void draw_band(const Target& target, const Corners& corners) {
    const auto [top, bottom] = std::minmax_element(corners.begin(), corners.end(), above);
    const std::int64_t last_row = target.last_row(bottom->y);
    for (std::int64_t y = target.first_row(top->y); y < last_row; ++y) {
        std::int64_t first = std::numeric_limits<std::int64_t>::max();
        std::int64_t last = std::numeric_limits<std::int64_t>::min();
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const auto [a, b] = std::minmax(corners[i], corners[(i + 1) % corners.size()], above);
            if (y >= a.y && y < b.y) {
                const std::int64_t x = a.x + ceil_div((b.x - a.x) * (y - a.y), b.y - a.y);
                first = std::min(first, x);
                last = std::max(last, x);
            }
        }
        target.fill(y, first, last);
    }
}

} // namespace

void draw_wide_line(const PixelView& pixels, const PixelRect& clip, int x0, int y0, int x1, int y1,
                    int width, std::uint32_t color) {
    const auto place = [](int x, int y) {
        return Place{std::clamp(x, -kFarthest, kFarthest), std::clamp(y, -kFarthest, kFarthest)};
    };
    const Target target{pixels, clip, color};
    const Place from = place(x0, y0);
    const Place to = place(x1, y1);
    width = std::min(width, kFarthest);
    draw_disc(target, from, width);
    if (from.x != to.x || from.y != to.y) {
        draw_disc(target, to, width);
        draw_band(target, band_corners(from, to, width));
    }
}

} // namespace platform
