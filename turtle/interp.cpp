#include "turtle/interp.h"

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

    // A turn is less than a full one, so it is over the top once at most. No branches: how often
    // that happens is nothing that a processor could guess.
    void right(int turn) {
        degrees_ += turn;
        const bool over = degrees_ > kFullTurn;
        circles_.right += over ? 1 : 0;
        degrees_ -= over ? kFullTurn : 0;
    }

    void left(int turn) {
        degrees_ -= turn;
        const bool under = degrees_ < -kFullTurn;
        circles_.left += under ? 1 : 0;
        degrees_ += under ? kFullTurn : 0;
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
        left_ = x < left_ ? x : left_;
        right_ = x > right_ ? x : right_;
        top_ = y < top_ ? y : top_;
        bottom_ = y > bottom_ ? y : bottom_;
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
    Turtle(HDC device, const DrawContext& ctx, const Path& path)
        : x_(ctx.x), y_(ctx.y), scale_x_(ctx.scale_x), scale_y_(ctx.scale_y),
          distance_(ctx.distance), heading_(ctx.heading), path_(path), pen_up_(ctx.pen_up),
          color_{ctx.red, ctx.green, ctx.blue}, device_(device), pen_width_(ctx.pen_width) {}

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
    void color(std::uint8_t part, int increment) {
        color_[part] = (color_[part] + increment) & 255;
        ++color_changes_;
        if (device_ != nullptr) {
            pen_renew(device_, pen_width_, color_[0], color_[1], color_[2]);
        }
    }

    void pen(std::int32_t up) { pen_up_ = up; }

    void repeated(const Tally& tally) {
        repeats_ += tally.repeats;
        repetitions_ += tally.repetitions;
    }

    void finish(DrawContext* ctx);

  private:
    double x_, y_, scale_x_, scale_y_, distance_;
    Heading heading_;
    Path path_;
    std::int32_t pen_up_;
    std::int32_t color_[3];
    HDC device_;
    int pen_width_;
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
    ctx->red = color_[0];
    ctx->green = color_[1];
    ctx->blue = color_[2];
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

struct Loop {
    int left; // passes
    std::uint32_t done;
};

// Runs the code. False when the steps did not suffice.
template <class Turtle>
bool run_code(CodeWord* code, Turtle& turtle, Budget& budget) {
    WorkStack<Loop> outer;
    Loop loop{0, 0};
    CodeWord* word = code;
    budget.pay(word);
    for (;;) {
        const CodeWord& now = *word++;
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
            turtle.color(now.part, now.number);
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
        case Op::loop:
            turtle.repeated({1, static_cast<std::uint32_t>(now.number)});
            outer.push(loop);
            loop = {now.number, now.target};
            budget.pay(word);
            break;
        case Op::again:
            if (--loop.left != 0) {
                word = code + now.target;
            } else {
                word = code + loop.done;
                loop = outer.pop();
            }
            budget.pay(word);
            break;
        case Op::go:
            word = code + now.target;
            budget.pay(word);
            break;
        case Op::end:
            return true;
        case Op::limit:
            return false;
        }
    }
}

template <class Heading, class Path>
bool run(HDC device, DrawContext* ctx, const Path& path, std::int64_t steps, LinearCode* code) {
    Turtle<Heading, Path> turtle(device, *ctx, path);
    Budget budget(steps);
    const bool ended = run_code(code->at(0), turtle, budget);
    turtle.finish(ctx);
    // The step that is one too many is counted, too.
    ctx->steps = add_count(ctx->steps, ended ? steps - budget.left() : steps + 1);
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
