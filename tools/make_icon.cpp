// Draws a turtle program as an icon file with a transparent background, in all sizes that desktops
// use. The same program always gives the same bytes.
#include "model/expr.h"
#include "model/parse.h"
#include "turtle/draw.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace pelmora;

// Strokes are drawn without smoothing on a canvas this many times finer than the icon, and averaged
// down: no seams where strokes meet, and only integers.
constexpr int kFineness = 8;

// The width of a stroke as a part of the icon; small icons need bolder strokes to be recognised.
int stroke_width(int size) {
    const int percent = size <= 24 ? 9 : 7;
    return std::max(size * kFineness * percent / 100, 1);
}

struct Canvas {
    int side;                         // pixels
    int pen_width;                    // pixels
    std::vector<std::uint32_t> cells; // 0: transparent; else 0xFFRRGGBB
    POINT at;
    HGDIOBJ pen;
};
Canvas canvas;

std::uint32_t& canvas_cell(int x, int y) {
    const auto column = static_cast<std::size_t>(x);
    const auto row = static_cast<std::size_t>(y);
    return canvas.cells[row * static_cast<std::size_t>(canvas.side) + column];
}

// --- The drawing device --------------------------------------------------------------------------

// Pens are numbers: their colour, and a bit so that black is not null.
constexpr std::uintptr_t kPenBit = 0x1000000;

std::uint32_t pen_cell() {
    const auto color = reinterpret_cast<std::uintptr_t>(canvas.pen);
    const auto red = static_cast<std::uint32_t>(color & 0xFFU);
    const auto green = static_cast<std::uint32_t>((color >> 8U) & 0xFFU);
    const auto blue = static_cast<std::uint32_t>((color >> 16U) & 0xFFU);
    return 0xFF000000U | (red << 16U) | (green << 8U) | blue;
}

// Whether a pixel lies within `radius` of the stroke from `a` to `b`.
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

} // namespace

extern "C" {

BOOL MoveToEx(HDC, int x, int y, POINT*) {
    canvas.at = {x, y};
    return TRUE;
}

BOOL LineTo(HDC, int x, int y) {
    const POINT from = canvas.at;
    const POINT to{x, y};
    const int radius = canvas.pen_width / 2;
    const LONG top = std::max<LONG>(std::min(from.y, to.y) - radius, 0);
    const LONG bottom = std::min<LONG>(std::max(from.y, to.y) + radius, canvas.side - 1);
    const LONG left = std::max<LONG>(std::min(from.x, to.x) - radius, 0);
    const LONG right = std::min<LONG>(std::max(from.x, to.x) + radius, canvas.side - 1);
    for (LONG row = top; row <= bottom; ++row) {
        for (LONG column = left; column <= right; ++column) {
            if (in_stroke(from, to, column, row, radius)) {
                canvas_cell(column, row) = pen_cell();
            }
        }
    }
    canvas.at = to;
    return TRUE;
}

HPEN CreatePen(int, int, COLORREF color) {
    return reinterpret_cast<HPEN>(kPenBit | color);
}

HGDIOBJ SelectObject(HDC, HGDIOBJ object) {
    return std::exchange(canvas.pen, object);
}

BOOL DeleteObject(HGDIOBJ) {
    return TRUE;
}

HGDIOBJ GetStockObject(int) {
    return reinterpret_cast<HGDIOBJ>(kPenBit);
}

} // extern "C"

namespace {

// --- The picture ---------------------------------------------------------------------------------

// Any non-null handle: there is only one canvas.
HDC canvas_device() {
    return reinterpret_cast<HDC>(&canvas);
}

// Draws the program in the middle of a new canvas, as large as it fits.
void draw_canvas(const ExprNode* program, int size) {
    canvas.side = size * kFineness;
    canvas.pen_width = stroke_width(size);
    const auto side = static_cast<std::size_t>(canvas.side);
    canvas.cells.assign(side * side, 0);

    DrawContext ctx{};
    ctx.max_steps = kDefaultMaxSteps;
    RECT bounds{};
    draw_reset(&ctx);
    draw_run(nullptr, &ctx, program, &bounds);
    const double scale = static_cast<double>(canvas.side - canvas.pen_width) /
                         std::max(bounds.right - bounds.left, bounds.bottom - bounds.top);
    draw_reset(&ctx);
    ctx.scale_x = scale;
    ctx.scale_y = -scale;
    ctx.origin_x = canvas.side / 2.0 - (bounds.left + bounds.right) / 2.0 * scale;
    ctx.origin_y = canvas.side / 2.0 + (bounds.top + bounds.bottom) / 2.0 * scale;
    draw_run(canvas_device(), &ctx, program, nullptr);
}

// One pixel of the icon, 0xAARRGGBB: the mean of the drawn cells, with their coverage as alpha.
std::uint32_t mean_pixel(int x, int y) {
    std::uint32_t drawn = 0;
    std::uint32_t sums[3] = {};
    for (int row = y * kFineness; row < (y + 1) * kFineness; ++row) {
        for (int column = x * kFineness; column < (x + 1) * kFineness; ++column) {
            const std::uint32_t cell = canvas_cell(column, row);
            drawn += cell >> 31U;
            sums[0] += cell & 0xFFU;
            sums[1] += (cell >> 8U) & 0xFFU;
            sums[2] += (cell >> 16U) & 0xFFU;
        }
    }
    if (drawn == 0) {
        return 0;
    }
    const std::uint32_t alpha = drawn * 255U / (kFineness * kFineness);
    return (alpha << 24U) | (sums[2] / drawn << 16U) | (sums[1] / drawn << 8U) | sums[0] / drawn;
}

// --- The file ------------------------------------------------------------------------------------

using FileBytes = std::string;

void put(FileBytes* out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        out->push_back(static_cast<char>(value >> (8 * i) & 0xFFU));
    }
}

// The canvas as the bitmap of an icon: a header whose height counts pixels and mask, the pixels
// with the bottom row first, and the mask for systems without partial transparency.
FileBytes icon_bitmap(int size) {
    const auto side = static_cast<std::uint32_t>(size);
    FileBytes pixels;
    FileBytes mask;
    for (int y = size - 1; y >= 0; --y) {
        std::uint32_t hidden = 0;
        for (int x = 0; x < size; ++x) {
            const std::uint32_t pixel = mean_pixel(x, y);
            put(&pixels, pixel, 4);
            hidden = hidden << 1U | (pixel >> 24U == 0 ? 1U : 0U);
            if (x % 8 == 7) {
                put(&mask, hidden & 0xFFU, 1);
            }
        }
        for (int filled = size / 8; filled % 4 != 0; ++filled) {
            put(&mask, 0, 1); // rows are whole 32-bit words
        }
    }
    FileBytes out;
    put(&out, 40, 4); // the size of this header
    put(&out, side, 4);
    put(&out, side * 2, 4);
    put(&out, 1, 2);  // plane
    put(&out, 32, 2); // bits a pixel
    put(&out, 0, 4);  // not compressed
    put(&out, static_cast<std::uint32_t>(pixels.size() + mask.size()), 4);
    out.append(16, '\0'); // resolution and palette
    return out + pixels + mask;
}

FileBytes icon_file(const ExprNode* program) {
    constexpr int kSizes[] = {16, 24, 32, 48, 64}; // multiples of 8
    constexpr std::uint32_t kCount = std::size(kSizes);
    FileBytes directory;
    FileBytes pictures;
    put(&directory, 0, 2);
    put(&directory, 1, 2); // an icon
    put(&directory, kCount, 2);
    for (const int size : kSizes) {
        draw_canvas(program, size);
        const FileBytes picture = icon_bitmap(size);
        put(&directory, static_cast<std::uint32_t>(size), 1);
        put(&directory, static_cast<std::uint32_t>(size), 1);
        put(&directory, 0, 2);  // no palette
        put(&directory, 1, 2);  // plane
        put(&directory, 32, 2); // bits a pixel
        put(&directory, static_cast<std::uint32_t>(picture.size()), 4);
        put(&directory, static_cast<std::uint32_t>(6 + 16 * kCount + pictures.size()), 4);
        pictures += picture;
    }
    return directory + pictures;
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_icon PROGRAM.txt ICON.ico\n");
        return 2;
    }
    std::ifstream in(argv[1]);
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    const ExprTree program(parse_expr(text.c_str()));
    if (!in || program == nullptr) {
        std::fprintf(stderr, "%s cannot be read as a turtle program\n", argv[1]);
        return 1;
    }
    std::ofstream out(argv[2], std::ios::binary);
    out << icon_file(program.get()) << std::flush;
    if (!out) {
        std::fprintf(stderr, "%s cannot be written\n", argv[2]);
        return 1;
    }
    return 0;
}
