// The moves of a run, recorded while it measures and then drawn without a second run. So a picture
// costs little more than its lines.
#pragma once

#include "model/node.h"
#include "turtle/draw_context.h"
#include "turtle/path.h"

#include <cstdint>

namespace pelmora {

struct TracedMove {
    std::uint16_t direction_index;
    std::int16_t distance;
    std::uint32_t color; // with kTracedPenUp set where no line is drawn
};
static_assert(sizeof(TracedMove) == 8);

inline constexpr std::uint32_t kTracedPenUp = 1U << 31U;

// Runs of more steps are not traced.
inline constexpr std::int32_t kMaxTracedMoves = kDefaultMaxSteps;

struct Trace {
    std::int32_t count = 0;
    TracedMove moves[kMaxTracedMoves];
};

// Measures and records the moves.
class TracedPath : public MeasuredPath {
  public:
    TracedPath(RECT* bounds, Trace* trace)
        : MeasuredPath(bounds), next_(trace->moves), trace_(trace) {}

    void go(const Move& move) {
        MeasuredPath::go(move);
        *next_++ = {static_cast<std::uint16_t>(move.direction_index), move.distance,
                    move.color | (move.pen_up == 0 ? 0 : kTracedPenUp)};
    }

    void finish() const {
        MeasuredPath::finish();
        trace_->count = static_cast<std::int32_t>(next_ - trace_->moves);
    }

  private:
    TracedMove* next_;
    Trace* trace_;
};

// Measures like a run without a device and records the moves. False when nothing was done: the run
// may be too long, starts with a heading outside the table, or has faults, which every run must
// log.
bool interp_trace(DrawContext* ctx, const ExprNode* node, RECT* bounds, Trace* trace);

// Draws the moves from the context's origin and in its scale, and leaves the position where a run
// would. Pens are made only for visible lines: see DevicePen. The pen's width must be 0 or 1: lines
// of length 0 are dropped, and wider pens show them.
void trace_draw(HDC device, DrawContext* ctx, const Trace& trace);

} // namespace pelmora
