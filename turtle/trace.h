// What can be seen of a run: its moves, kept while it measures, so that they are drawn without a
// second run. That makes a picture cost little more than its lines.
#pragma once

#include "model/work_stack.h"
#include "platform/win32.h"
#include "turtle/draw.h"
#include "turtle/packed.h"
#include "turtle/path.h"

#include <cstdint>

namespace pelmora {

struct TracedMove {
    std::uint16_t place;   // of the direction in its table
    std::int16_t distance; // turtle units
    std::uint32_t color;   // components as packed, and kTracedPenUp where no line is drawn
};
static_assert(sizeof(TracedMove) == 8);

inline constexpr std::uint32_t kTracedPenUp = 1U << 31U;

// Runs of more steps are not traced.
inline constexpr std::int32_t kMostTracedMoves = kDefaultMaxSteps;

struct Trace {
    std::int32_t count = 0;
    TracedMove moves[kMostTracedMoves];
};

// Measures, and keeps the moves.
class TracedPath : public MeasuredPath {
  public:
    static constexpr bool kKeepsMoves = true;

    TracedPath(RECT* bounds, Trace* trace)
        : MeasuredPath(bounds), next_(trace->moves), trace_(trace) {}

    void keep(int place, std::int16_t distance, PackedColor color, std::int32_t pen_up) {
        *next_++ = {static_cast<std::uint16_t>(place), distance,
                    static_cast<std::uint32_t>(color) | (pen_up == 0 ? 0 : kTracedPenUp)};
    }

    void finish() const {
        MeasuredPath::finish();
        trace_->count = static_cast<std::int32_t>(next_ - trace_->moves);
    }

  private:
    TracedMove* next_;
    Trace* trace_;
};

// Draws the moves from the context's origin and in its scale; the position is left where the run
// that they are from would leave it. Pens are made for the lines that can be seen: see DevicePen.
// The pen's width must be 0 or 1, as lines without length show nothing then.
void trace_draw(HDC device, DrawContext* ctx, const Trace& trace);

} // namespace pelmora
