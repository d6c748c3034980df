#include "turtle/trace.h"

#include "turtle/device_units.h"
#include "turtle/heading_table.h"

#include <array>
#include <bit>
#include <utility>

namespace pelmora {
namespace {

// Points in one Polyline() call.
constexpr int kMaxPoints = 256;

// x and y in one SIMD register.
using Pair [[gnu::vector_size(16)]] = double;
using PairOfInts [[gnu::vector_size(8)]] = std::int32_t;

// A POINT as one integer, for a single compare and store.
using PackedPoint = std::uint64_t;

[[gnu::noinline]] PackedPoint packed_point(double x, double y) {
    return std::bit_cast<PackedPoint>(POINT{device_round(x), device_round(y)});
}

// Replays the turtle's moves on the device.
class Replayer {
  public:
    explicit Replayer(const DrawContext& ctx)
        : at_{ctx.origin_x, ctx.origin_y}, scale_{ctx.scale_x, ctx.scale_y} {}

    void go(const TracedMove& move) {
        const Direction& direction = kDirections[move.direction_index];
        const auto distance = static_cast<double>(move.distance);
        // The same operations as in a run: equal to the last bit.
        at_ += Pair{direction.cos, direction.sin} * Pair{distance, distance} * scale_;
    }

    [[nodiscard]] PackedPoint point() const {
        const auto bits = std::bit_cast<std::array<std::uint64_t, 2>>(at_);
        // Non-negative numbers order like their bits; all others have larger bits.
        constexpr auto kTop = std::bit_cast<std::uint64_t>(kDeviceTop);
        if (bits[0] < kTop && bits[1] < kTop) [[likely]] {
            return std::bit_cast<PackedPoint>(__builtin_convertvector(at_ + 0.5, PairOfInts));
        }
        return packed_point(at_[0], at_[1]);
    }

    void finish(DrawContext* ctx) const {
        ctx->x = at_[0];
        ctx->y = at_[1];
    }

  private:
    Pair at_, scale_;
};

} // namespace

void trace_draw(HDC device, DrawContext* ctx, const Trace& trace) {
    Replayer turtle(*ctx);
    std::uint32_t pen_color = kTracedPenUp; // no pen's colour
    POINT points[kMaxPoints + 1];
    const TracedMove* move = trace.moves;
    const TracedMove* const end = move + trace.count;
    while (move != end) {
        std::uint32_t color = move->color;
        if (color >= kTracedPenUp) {
            turtle.go(*move++);
            continue;
        }
        PackedPoint last = turtle.point();
        points[0] = std::bit_cast<POINT>(last);
        int count = 1;
        const auto goes_on = [&](const TracedMove& next) {
            // Before the first line the colour may change.
            return next.color == color || (count == 1 && next.color < kTracedPenUp);
        };
        for (; move != end && goes_on(*move) && count <= kMaxPoints; ++move) {
            color = move->color;
            turtle.go(*move);
            const PackedPoint to = turtle.point();
            // A line of length 0 shows nothing. It is dropped without a branch, which would be
            // unpredictable.
            const bool moved = to != last;
            points[count] = std::bit_cast<POINT>(to);
            count += moved ? 1 : 0;
            last = to;
        }
        if (count > 1) {
            if (std::exchange(pen_color, color) != color) { // only now, as a line needs it
                pen_renew(device, ctx->pen_width, color);
            }
            Polyline(device, points, count);
        }
    }
    turtle.finish(ctx);
}

} // namespace pelmora
