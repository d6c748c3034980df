#include "tools/icon_canvas.h"

#include "turtle/draw.h"

#include <algorithm>
#include <cstddef>
#include <utility>

// --- The drawing device --------------------------------------------------------------------------

namespace {

std::vector<icon::Stroke> drawn;
POINT at;
HGDIOBJ selected_pen;

// Pens are numbers: their colour, and a bit so that black is not null.
constexpr std::uintptr_t kPenBit = 0x1000000;

COLORREF pen_color() {
    return static_cast<COLORREF>(reinterpret_cast<std::uintptr_t>(selected_pen) & ~kPenBit);
}

} // namespace

extern "C" {

BOOL MoveToEx(HDC, int x, int y, POINT*) {
    at = {x, y};
    return TRUE;
}

BOOL LineTo(HDC, int x, int y) {
    const POINT to{x, y};
    drawn.push_back({at, to, pen_color()});
    at = to;
    return TRUE;
}

HPEN CreatePen(int, int, COLORREF color) {
    return reinterpret_cast<HPEN>(kPenBit | color);
}

HGDIOBJ SelectObject(HDC, HGDIOBJ object) {
    return std::exchange(selected_pen, object);
}

BOOL DeleteObject(HGDIOBJ) {
    return TRUE;
}

HGDIOBJ GetStockObject(int) {
    return reinterpret_cast<HGDIOBJ>(kPenBit);
}

} // extern "C"

// --- The picture ---------------------------------------------------------------------------------

namespace icon {
namespace {

using namespace pelmora;

// Strokes are drawn without smoothing on a grid this many times finer than the icon, and averaged
// down: no seams where strokes meet, and only integers.
constexpr int kFineness = 8;

// Small icons need bolder strokes to be recognised.
int pen_percent(int size) {
    return size <= 24 ? 9 : 7;
}

// The grid, a row after the other. 0: transparent; else 0xFFRRGGBB.
struct Grid {
    std::size_t side;
    std::vector<std::uint32_t> cells;
};

// A colour value has red in its lowest byte.
std::uint32_t cell_of(COLORREF color) {
    return 0xFF000000U | (color & 0xFFU) << 16U | (color & 0xFF00U) | (color >> 16U & 0xFFU);
}

// Whether a cell lies within `radius` of the stroke from `a` to `b`.
bool in_stroke(POINT a, POINT b, int x, int y, std::int64_t radius) {
    const std::int64_t dx = b.x - a.x;
    const std::int64_t dy = b.y - a.y;
    const std::int64_t length2 = dx * dx + dy * dy;
    const std::int64_t along = (x - a.x) * dx + (y - a.y) * dy;
    if (length2 == 0 || along <= 0 || along >= length2) {
        const POINT end = along <= 0 ? a : b;
        const std::int64_t ex = x - end.x;
        const std::int64_t ey = y - end.y;
        return ex * ex + ey * ey <= radius * radius;
    }
    const std::int64_t across = (x - a.x) * dy - (y - a.y) * dx;
    return across * across <= radius * radius * length2;
}

void fill_stroke(Grid* grid, const Stroke& stroke, int radius) {
    const auto [from, to, color] = stroke;
    const LONG last = static_cast<LONG>(grid->side) - 1;
    const LONG top = std::max<LONG>(std::min(from.y, to.y) - radius, 0);
    const LONG bottom = std::min<LONG>(std::max(from.y, to.y) + radius, last);
    const LONG left = std::max<LONG>(std::min(from.x, to.x) - radius, 0);
    const LONG right = std::min<LONG>(std::max(from.x, to.x) + radius, last);
    for (LONG row = top; row <= bottom; ++row) {
        for (LONG column = left; column <= right; ++column) {
            if (in_stroke(from, to, column, row, radius)) {
                const auto y = static_cast<std::size_t>(row);
                grid->cells[y * grid->side + static_cast<std::size_t>(column)] = cell_of(color);
            }
        }
    }
}

// One pixel of the icon: the mean of its filled cells, with their share as alpha.
std::uint32_t mean_pixel(const Grid& grid, std::size_t x, std::size_t y) {
    std::uint32_t filled = 0;
    std::uint32_t sums[3] = {};
    for (std::size_t row = y * kFineness; row < (y + 1) * kFineness; ++row) {
        for (std::size_t column = x * kFineness; column < (x + 1) * kFineness; ++column) {
            const std::uint32_t cell = grid.cells[row * grid.side + column];
            filled += cell >> 31U;
            sums[0] += cell & 0xFFU;
            sums[1] += (cell >> 8U) & 0xFFU;
            sums[2] += (cell >> 16U) & 0xFFU;
        }
    }
    if (filled == 0) {
        return 0;
    }
    const std::uint32_t alpha = filled * 255U / (kFineness * kFineness);
    return (alpha << 24U) | (sums[2] / filled << 16U) | (sums[1] / filled << 8U) | sums[0] / filled;
}

} // namespace

Canvas strokes_of(const ExprNode* program, int side, int pen_percent) {
    Canvas canvas{side, std::max(side * pen_percent / 100, 1), {}};
    DrawContext ctx{};
    ctx.max_steps = kDefaultMaxSteps;
    RECT bounds{};
    draw_reset(&ctx);
    draw_run(nullptr, &ctx, program, &bounds);
    const double scale = static_cast<double>(side - canvas.pen_width) /
                         std::max(bounds.right - bounds.left, bounds.bottom - bounds.top);
    draw_reset(&ctx);
    ctx.scale_x = scale;
    ctx.scale_y = -scale;
    ctx.origin_x = side / 2.0 - (bounds.left + bounds.right) / 2.0 * scale;
    ctx.origin_y = side / 2.0 + (bounds.top + bounds.bottom) / 2.0 * scale;
    // Any device that is not null: there is only the one above.
    draw_run(reinterpret_cast<HDC>(&drawn), &ctx, program, nullptr);
    canvas.strokes = std::exchange(drawn, {});
    return canvas;
}

std::vector<std::uint32_t> pixels_of(const ExprNode* program, int size) {
    const Canvas canvas = strokes_of(program, size * kFineness, pen_percent(size));
    Grid grid{static_cast<std::size_t>(canvas.side), {}};
    grid.cells.assign(grid.side * grid.side, 0);
    for (const Stroke& stroke : canvas.strokes) {
        fill_stroke(&grid, stroke, canvas.pen_width / 2);
    }
    const auto side = static_cast<std::size_t>(size);
    std::vector<std::uint32_t> pixels;
    pixels.reserve(side * side);
    for (std::size_t y = 0; y < side; ++y) {
        for (std::size_t x = 0; x < side; ++x) {
            pixels.push_back(mean_pixel(grid, x, y));
        }
    }
    return pixels;
}

} // namespace icon
