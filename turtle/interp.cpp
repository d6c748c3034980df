#include "turtle/interp.h"

#include "turtle/color.h"
#include "turtle/device_units.h"
#include "turtle/faults.h"
#include "turtle/heading_table.h"
#include "turtle/linear_code.h"
#include "turtle/pen.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pelmora {
namespace {

// --- The heading ---------------------------------------------------------------------------------

// Counts of full circles, brought back from above and from below.
struct Circles {
    std::int64_t right = 0;
    std::int64_t left = 0;
};

// A whole number of degrees within a full turn to either side, as in every program that starts from
// such a heading: directions come from the table.
class WholeHeading {
  public:
    static bool takes(double degrees) {
        return std::abs(degrees) <= kFullTurn && degrees == std::trunc(degrees) &&
               !(degrees == 0.0 && std::signbit(degrees)); // the table has no negative zero
    }

    explicit WholeHeading(double degrees) : degrees_(static_cast<int>(degrees)) {}

    // A turn is less than a full one, so it closes one circle at most.
    void right(int turn) {
        degrees_ += turn;
        if (degrees_ > kFullTurn) [[unlikely]] {
            degrees_ -= kFullTurn;
            ++circles_.right;
        }
    }

    void left(int turn) {
        degrees_ -= turn;
        if (degrees_ < -kFullTurn) [[unlikely]] {
            degrees_ += kFullTurn;
            ++circles_.left;
        }
    }

    [[nodiscard]] Direction direction() const {
        return kDirections[static_cast<std::size_t>(degrees_ + kFullTurn)];
    }
    [[nodiscard]] double degrees() const { return degrees_; }
    [[nodiscard]] const Circles& circles() const { return circles_; }

  private:
    int degrees_;
    Circles circles_;
};

// Any other.
class RealHeading {
  public:
    explicit RealHeading(double degrees) : degrees_(degrees) {}

    void right(int turn) { add(turn); }
    void left(int turn) { add(-turn); }

    [[nodiscard]] Direction direction() const {
        const double angle = degrees_ * kTurnPerDegree * kRadiansPerTurn;
        return {std::cos(angle), std::sin(angle)};
    }
    [[nodiscard]] double degrees() const { return degrees_; }
    [[nodiscard]] const Circles& circles() const { return circles_; }

  private:
    void add(int turn) {
        degrees_ += turn;
        for (; degrees_ > kFullTurn; degrees_ -= kFullTurn) {
            ++circles_.right;
        }
        for (; degrees_ < -kFullTurn; degrees_ += kFullTurn) {
            ++circles_.left;
        }
    }

    double degrees_;
    Circles circles_;
};

// --- The path ------------------------------------------------------------------------------------

// Widens bounds. Rounding keeps the order of numbers, so the extremes are rounded once, at the end.
class MeasuredPath {
  public:
    explicit MeasuredPath(RECT* bounds) : bounds_(bounds) {}

    void move(double x, double y, std::int32_t /*pen_up*/) {
        left_ = left_ < x ? left_ : x;
        right_ = right_ > x ? right_ : x;
        top_ = top_ < y ? top_ : y;
        bottom_ = bottom_ > y ? bottom_ : y;
    }

    void finish() {
        if (left_ > right_) {
            return; // no move at all
        }
        bounds_->left = std::min<LONG>(bounds_->left, device_round(left_));
        bounds_->top = std::min<LONG>(bounds_->top, device_round(top_));
        bounds_->right = std::max<LONG>(bounds_->right, device_round(right_));
        bounds_->bottom = std::max<LONG>(bounds_->bottom, device_round(bottom_));
    }

  private:
    static constexpr double kInfinity = std::numeric_limits<double>::infinity();

    RECT* bounds_;
    double left_ = kInfinity;
    double top_ = kInfinity;
    double right_ = -kInfinity;
    double bottom_ = -kInfinity;
};

// Draws lines, each with a move of its own.
class DrawnPath {
  public:
    DrawnPath(HDC device, double x, double y)
        : device_(device), x_(device_round(x)), y_(device_round(y)) {}

    void move(double x, double y, std::int32_t pen_up) {
        const int from_x = x_;
        const int from_y = y_;
        x_ = device_round(x);
        y_ = device_round(y);
        if (pen_up == 0 && device_ != nullptr) {
            MoveToEx(device_, from_x, from_y, nullptr);
            LineTo(device_, x_, y_);
        }
    }

    void finish() {}

  private:
    HDC device_;
    int x_, y_;
};

// --- The turtle ----------------------------------------------------------------------------------

std::int32_t add_count(std::int32_t start, std::int64_t count) {
    return device_saturate(start + count);
}

// What a run changes. It is copied out of the context and back, so that it stays in registers.
template <class Heading, class Path>
class Turtle {
  public:
    Turtle(const DrawContext& ctx, const Path& path)
        : x_(ctx.x), y_(ctx.y), scale_x_(ctx.scale_x), scale_y_(ctx.scale_y),
          distance_(ctx.distance), path_(path), heading_(ctx.heading), pen_up_(ctx.pen_up),
          color_(color_pack(ctx.red, ctx.green, ctx.blue)) {}

    void forward(double distance) {
        const Direction direction = heading_.direction();
        x_ += direction.cos * distance * scale_x_;
        y_ += direction.sin * distance * scale_y_;
        path_.move(x_, y_, pen_up_);
        distance_ += distance;
    }

    void right(int degrees) {
        ++right_turns_;
        heading_.right(degrees);
    }

    void left(int degrees) {
        ++left_turns_;
        heading_.left(degrees);
    }

    // As an increment is less than the modulus, this always changes the colour.
    void color(PackedColor increment) {
        color_ = color_add(color_, increment);
        ++color_changes_;
    }

    void pen(std::int32_t up) { pen_up_ = up; }

    void repeated(const Tally& tally) {
        repeats_ += tally.repeats;
        repetitions_ += tally.repetitions;
    }

    void renew_pen(HDC device, int width) const {
        pen_renew(device, width, color_red(color_), color_green(color_),
                  color_blue(color_));
    }

    void finish(DrawContext* ctx);

  private:
    double x_, y_, scale_x_, scale_y_, distance_;
    Path path_;
    Heading heading_;
    std::int32_t pen_up_;
    PackedColor color_;
    std::int64_t right_turns_ = 0;
    std::int64_t left_turns_ = 0;
    std::int64_t color_changes_ = 0;
    std::int64_t repeats_ = 0;
    std::int64_t repetitions_ = 0;
};

template <class Heading, class Path>
void Turtle<Heading, Path>::finish(DrawContext* ctx) {
    const Circles& circles = heading_.circles();
    path_.finish();
    ctx->x = x_;
    ctx->y = y_;
    ctx->heading = heading_.degrees();
    ctx->distance = distance_;
    ctx->pen_up = pen_up_;
    ctx->red = color_red(color_);
    ctx->green = color_green(color_);
    ctx->blue = color_blue(color_);
    ctx->turns = add_count(ctx->turns, right_turns_ + left_turns_);
    ctx->right_turns = add_count(ctx->right_turns, right_turns_);
    ctx->left_turns = add_count(ctx->left_turns, left_turns_);
    ctx->circles = add_count(ctx->circles, circles.right + circles.left);
    ctx->circles_right = add_count(ctx->circles_right, circles.right);
    ctx->circles_left = add_count(ctx->circles_left, circles.left);
    ctx->color_changes = add_count(ctx->color_changes, color_changes_);
    ctx->repeats = add_count(ctx->repeats, repeats_);
    ctx->repetitions = add_count(ctx->repetitions, repetitions_);
}

// --- The run -------------------------------------------------------------------------------------

// The steps that are left. A leg is paid for when it begins; into one that is longer than what is
// left the end of the run is written, as the code is made for this run alone.
class Budget {
  public:
    explicit Budget(std::int64_t steps) : left_(steps) {}

    void pay(CodeWord* leg) {
        left_ -= leg->leg;
        if (left_ < 0) {
            cut(leg, left_ + leg->leg);
        }
    }

    [[nodiscard]] std::int64_t left() const { return left_; }

  private:
    static void cut(CodeWord* leg, std::int64_t steps) {
        while (!op_is_step(leg->op) || steps-- > 0) {
            ++leg;
        }
        leg->op = Op::limit;
    }

    std::int64_t left_;
};

enum class Event {
    color, // it has changed
    end,
    limit,
};

// A run between two events.
template <class Turtle>
struct Run {
    Turtle turtle;
    Budget budget;
    CodeWord* word;
};

// Runs on to the next event. What a call from within would cost is not the call: for its sake the
// compiler would keep the turtle in memory all the way. So new pens are left to the caller, and
// nothing here calls anything, but for lines and unusual headings.
template <class Turtle>
[[gnu::noinline]] Event run_on(LinearCode* code, bool stops_at_colors, Run<Turtle>* run) {
    Turtle turtle = run->turtle;
    Budget budget = run->budget;
    CodeWord* word = run->word;
    CodeWord* const words = code->words.at(0);
    LoopCounter* const counters = code->counters.at(0);
    const auto stop = [&](Event event) {
        *run = {turtle, budget, word + 1};
        return event;
    };
    for (;;) {
        const CodeWord& now = *word;
        switch (now.op) {
        case Op::forward:
            turtle.forward(now.distance);
            break;
        case Op::right:
            turtle.right(now.number);
            break;
        case Op::left:
            turtle.left(now.number);
            break;
        case Op::color:
            turtle.color(now.increment);
            if (stops_at_colors) {
                return stop(Event::color);
            }
            break;
        case Op::pen:
            turtle.pen(now.number);
            break;
        case Op::idle:
        case Op::line: // only in code for faults
            break;
        case Op::add:
            turtle.repeated(now.tally);
            break;
        case Op::loop: {
            const auto passes = static_cast<std::uint32_t>(now.number);
            turtle.repeated({1, passes});
            counters[now.jump.counter] = {passes, now.jump.target};
            budget.pay(word + 1);
            break;
        }
        case Op::again: {
            LoopCounter& loop = counters[now.jump.counter];
            word = words + (--loop.left != 0 ? now.jump.target : loop.done);
            budget.pay(word);
            continue;
        }
        case Op::go:
            word = words + now.jump.target;
            budget.pay(word);
            continue;
        case Op::end:
            return stop(Event::end);
        case Op::limit:
            return stop(Event::limit);
        default:
            __builtin_unreachable(); // spares the check of every op
        }
        ++word;
    }
}

template <class Heading, class Path>
bool run(HDC device, DrawContext* ctx, const Path& path, std::int64_t steps, LinearCode* code) {
    Run<Turtle<Heading, Path>> run{{*ctx, path}, Budget(steps), code->words.at(0)};
    run.budget.pay(run.word);
    Event event{};
    while ((event = run_on(code, device != nullptr, &run)) == Event::color) {
        run.turtle.renew_pen(device, ctx->pen_width);
    }
    run.turtle.finish(ctx);
    // The step that is one too many is counted, too.
    const bool ended = event == Event::end;
    ctx->steps = add_count(ctx->steps, ended ? steps - run.budget.left() : steps + 1);
    return ended;
}

template <class Path>
bool run(HDC device, DrawContext* ctx, const Path& path, std::int64_t steps, LinearCode* code) {
    return WholeHeading::takes(ctx->heading)
               ? run<WholeHeading>(device, ctx, path, steps, code)
               : run<RealHeading>(device, ctx, path, steps, code);
}

} // namespace

int interp_logo(HDC device, DrawContext* ctx, const ExprNode* node, RECT* bounds) {
    const PenState pen = ctx->pen_up == 1 ? 1 : 0;
    const auto steps = std::max<std::int64_t>(std::int64_t{ctx->max_steps} - ctx->steps, 0);
    Outline outline;
    outline_survey(node, pen, steps, &outline);
    if (outline.functions.at(0)->pass[pen].cost.lines != 0) {
        faults_report(outline, pen, steps);
    }
    LinearCode code;
    linear_code_assemble(outline, pen, Work::steps, &code);
    const bool ended = bounds != nullptr
                           ? run(device, ctx, MeasuredPath(bounds), steps, &code)
                           : run(device, ctx, DrawnPath(device, ctx->x, ctx->y), steps, &code);
    return ended ? 1 : 0;
}

} // namespace pelmora
