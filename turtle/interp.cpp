#include "turtle/interp.h"

#include "turtle/device_units.h"
#include "turtle/heading.h"
#include "turtle/history.h"
#include "turtle/path.h"
#include "turtle/trace.h"

#include <algorithm>
#include <array>
#include <span>

namespace pelmora {
namespace {

// What a terminal does, precomputed.
struct Action {
    OpFamily family = OpFamily::block; // which does nothing in a terminal
    std::int16_t number = 0;           // the instruction's parameter
    double amount = 0;                 // the same
    COLORREF color = 0;                // of a colour instruction: what it adds, and
    COLORREF component = 0;            // the bits of its component
};

constexpr bool is_color(OpFamily family) {
    return family >= OpFamily::red && family <= OpFamily::blue;
}

// By code; a code that is no instruction does nothing.
constexpr auto kActions = [] {
    std::array<Action, 256> actions{};
    for (const auto& [code, name, family, number] : kInstructions) {
        actions[code] = {family, number, static_cast<double>(number)};
        if (is_color(family)) {
            const int shift = 8 * (static_cast<int>(family) - static_cast<int>(OpFamily::red));
            actions[code].color = static_cast<COLORREF>(number) << shift;
            actions[code].component = COLORREF{255} << shift;
        }
    }
    return actions;
}();

// The state that steps change, in a form that fits into registers.
template <class Heading, class Path>
class Turtle {
  public:
    Turtle(const DrawContext& ctx, const Path& path)
        : x_(ctx.x), y_(ctx.y), scale_x_(ctx.scale_x), scale_y_(ctx.scale_y),
          distance_(ctx.distance), path_(path), heading_(ctx.heading), pen_up_(ctx.pen_up),
          color_(turtle_color(ctx)) {}

    // Executes terminals to `end`, or with kStopsAtColors through the next colour change; returns
    // where it stopped.
    //
    // The loop calls nothing except for lines and fractional headings: any call, however rare,
    // makes the compiler keep the turtle in memory. So the caller makes new pens.
    template <bool kStopsAtColors>
    [[gnu::noinline]] const OpCode* execute(const OpCode* op, const OpCode* end) {
        Turtle turtle = *this; // a local copy stays in registers
        while (op != end) {
            const Action& action = kActions[*op++];
            // Comparisons, the frequent ones first: they are predicted better than the jump of a
            // switch.
            if (action.family == OpFamily::forward) {
                turtle.forward(action);
            } else if (action.family == OpFamily::turn) {
                turtle.heading_.turn(action.number);
                ++turtle.turns_;
                turtle.right_turns_ += action.number > 0 ? 1 : 0;
            } else if (is_color(action.family)) {
                const COLORREF sum = turtle.color_ + action.color;
                turtle.color_ = (turtle.color_ & ~action.component) | (sum & action.component);
                ++turtle.color_changes_;
                if (kStopsAtColors) {
                    break;
                }
            } else if (action.family == OpFamily::pen) {
                turtle.pen_up_ = action.number;
            }
        }
        *this = turtle;
        return op;
    }

    void renew_pen(HDC device, int width) const { pen_renew(device, width, color_); }

    void finish(DrawContext* ctx) const;

  private:
    void forward(const Action& action) {
        const Direction direction = heading_.direction();
        // In this order, as everywhere: pictures and scores depend on the last bit.
        x_ += direction.cos * action.amount * scale_x_;
        y_ += direction.sin * action.amount * scale_y_;
        path_.go({x_, y_, pen_up_, heading_.direction_index(), action.number, color_});
        distance_ += action.amount;
    }

    double x_, y_, scale_x_, scale_y_, distance_;
    Path path_;
    Heading heading_;
    std::int32_t pen_up_;
    COLORREF color_;
    std::int64_t color_changes_ = 0;
    std::int64_t turns_ = 0;
    std::int64_t right_turns_ = 0;
};

void add_count(std::int32_t* sum, std::int64_t count) {
    *sum = device_saturate(*sum + count);
}

template <class Heading, class Path>
void Turtle<Heading, Path>::finish(DrawContext* ctx) const {
    path_.finish();
    ctx->x = x_;
    ctx->y = y_;
    ctx->heading = heading_.degrees();
    ctx->distance = distance_;
    ctx->pen_up = pen_up_;
    ctx->red = static_cast<BYTE>(color_);
    ctx->green = static_cast<BYTE>(color_ >> 8U);
    ctx->blue = static_cast<BYTE>(color_ >> 16U);
    add_count(&ctx->color_changes, color_changes_);
    add_count(&ctx->turns, turns_);
    add_count(&ctx->right_turns, right_turns_);
    add_count(&ctx->left_turns, turns_ - right_turns_);
    const Circles& circles = heading_.circles();
    add_count(&ctx->circles, circles.right + circles.left);
    add_count(&ctx->circles_right, circles.right);
    add_count(&ctx->circles_left, circles.left);
}

// Executes `terminals`, the first of the history, and all that follow.
template <class Heading, class Path>
int run(HDC device, DrawContext* ctx, const Path& path, std::span<const OpCode> terminals,
        History* history) {
    Turtle<Heading, Path> turtle(*ctx, path);
    for (; !terminals.empty(); terminals = history->next()) {
        const OpCode* op = terminals.data();
        const OpCode* const end = op + terminals.size();
        while (op != end) {
            op = device == nullptr ? turtle.template execute<false>(op, end)
                                   : turtle.template execute<true>(op, end);
            if (device != nullptr && is_color(kActions[op[-1]].family)) {
                turtle.renew_pen(device, ctx->pen_width);
            }
        }
        add_count(&ctx->steps, static_cast<std::int64_t>(terminals.size()));
    }
    turtle.finish(ctx);
    add_count(&ctx->repeats, history->repeats());
    add_count(&ctx->repetitions, history->repetitions());
    add_count(&ctx->steps, history->is_cut() ? 1 : 0); // counts the step over the limit
    return history->is_cut() ? 0 : 1;
}

template <class Path>
int run(HDC device, DrawContext* ctx, const Path& path, History* history) {
    const std::span<const OpCode> first = history->next();
    return WholeHeading::takes(ctx->heading) ? run<WholeHeading>(device, ctx, path, first, history)
                                             : run<RealHeading>(device, ctx, path, first, history);
}

History history_of(const DrawContext& ctx, const ExprNode* node) {
    const std::int64_t steps = std::int64_t{ctx.max_steps} - ctx.steps;
    return History(node, ctx.pen_up == 1 ? 1 : 0, std::max<std::int64_t>(steps, 0));
}

} // namespace

int interp_logo(HDC device, DrawContext* ctx, const ExprNode* node, RECT* bounds) {
    History history = history_of(*ctx, node);
    const int result = bounds != nullptr
                           ? run(device, ctx, MeasuredPath(bounds), &history)
                           : run(device, ctx, DrawnPath(device, ctx->x, ctx->y), &history);
    history.report_faults();
    return result;
}

static_assert(kMaxTracedMoves <= kMaxTerminals); // all in one batch
bool interp_trace(DrawContext* ctx, const ExprNode* node, RECT* bounds, Trace* trace) {
    if (std::int64_t{ctx->max_steps} - ctx->steps > kMaxTracedMoves ||
        !WholeHeading::takes(ctx->heading)) {
        return false;
    }
    History history = history_of(*ctx, node);
    const std::span<const OpCode> all = history.next();
    if (history.has_faults()) {
        return false;
    }
    run<WholeHeading>(nullptr, ctx, TracedPath(bounds, trace), all, &history);
    return true;
}

} // namespace pelmora
