#include "turtle/trace.h"

#include "turtle/device_units.h"
#include "turtle/heading_table.h"
#include "turtle/pen.h"

#include <cstddef>

namespace pelmora {
namespace {

// So many points go into one call.
constexpr int kMostPoints = 256;

// Draws with pens that are made when a line needs them.
class Pens {
  public:
    Pens(HDC device, int width) : device_(device), width_(width) {}

    void draw(const POINT* points, int count, std::uint32_t color) {
        if (color != color_) {
            pen_renew(device_, width_, color_red(color), color_green(color), color_blue(color));
            color_ = color;
        }
        Polyline(device_, points, count);
    }

  private:
    HDC device_;
    int width_;
    std::uint32_t color_ = kTracedPenUp; // the colour of no pen
};

// The turtle on its way over the device.
class Walker {
  public:
    explicit Walker(const DrawContext& ctx)
        : x_(ctx.origin_x), y_(ctx.origin_y), scale_x_(ctx.scale_x), scale_y_(ctx.scale_y) {}

    void go(const TracedMove& move) {
        const Direction direction = kDirections[move.place];
        x_ += direction.cos * move.distance * scale_x_;
        y_ += direction.sin * move.distance * scale_y_;
    }

    [[nodiscard]] POINT point() const { return {device_round(x_), device_round(y_)}; }

    void finish(DrawContext* ctx) const {
        ctx->x = x_;
        ctx->y = y_;
    }

  private:
    double x_, y_, scale_x_, scale_y_;
};

} // namespace

void trace_draw(HDC device, DrawContext* ctx, const Trace& trace) {
    Pens pens(device, ctx->pen_width);
    Walker walker(*ctx);
    POINT points[kMostPoints + 1];
    points[0] = walker.point();
    const TracedMove* move = trace.moves;
    const TracedMove* const end = move + trace.count;
    while (move != end) {
        std::uint32_t color = move->color;
        int count = 1;
        // A colour without lines needs no stop.
        for (; move != end && (move->color == color || count == 1) && count <= kMostPoints;
             ++move) {
            color = move->color;
            walker.go(*move);
            const POINT to = walker.point();
            const POINT& last = points[count - 1];
            // A line without length has nothing to show. It is left out without a branch, as
            // whether the next one has any is not to be foreseen.
            const bool moved = ((to.x ^ last.x) | (to.y ^ last.y)) != 0;
            points[count] = to;
            count += moved ? 1 : 0;
        }
        if (count > 1 && (color & kTracedPenUp) == 0) {
            pens.draw(points, count, color);
        }
        points[0] = points[count - 1];
    }
    walker.finish(ctx);
}

} // namespace pelmora
