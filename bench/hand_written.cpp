#include "bench/hand_written.h"

#include "turtle/heading_table.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace pelmora_bench {
namespace {

using pelmora::DrawContext;

class Turtle {
  public:
    explicit Turtle(const DrawContext& ctx)
        : heading_(static_cast<int>(ctx.heading)), red_(ctx.red), blue_(ctx.blue),
          left_(ctx.max_steps), max_steps_(ctx.max_steps) {}

    // Whether there is one more step.
    bool step() { return left_-- > 0; }

    void forward(double distance) {
        const int place = heading_ + pelmora::kFullTurn;
        const pelmora::Direction d = pelmora::kDirections[static_cast<std::size_t>(place)];
        x_ += d.cos * distance;
        y_ += d.sin * distance;
        min_x_ = std::min(min_x_, x_);
        max_x_ = std::max(max_x_, x_);
        min_y_ = std::min(min_y_, y_);
        max_y_ = std::max(max_y_, y_);
        distance_ += distance;
    }

    void right(int degrees) {
        ++right_turns_;
        heading_ += degrees;
        if (heading_ > 360) {
            heading_ -= 360;
            ++circles_right_;
        }
    }

    void left(int degrees) {
        ++left_turns_;
        heading_ -= degrees;
        if (heading_ < -360) {
            heading_ += 360;
            ++circles_left_;
        }
    }

    void red(int increment) {
        red_ = (red_ + increment) % 256;
        ++color_changes_;
    }

    void blue(int increment) {
        blue_ = (blue_ + increment) % 256;
        ++color_changes_;
    }

    void repeat(int times) {
        ++repeats_;
        repetitions_ += times;
    }

    void store(DrawContext* ctx, RECT* bounds) const;

  private:
    double x_ = 0, y_ = 0;
    double min_x_ = 0, min_y_ = 0, max_x_ = 0, max_y_ = 0;
    double distance_ = 0;
    int heading_;
    int red_, blue_;
    int left_, max_steps_;
    int right_turns_ = 0, left_turns_ = 0, circles_right_ = 0, circles_left_ = 0;
    int color_changes_ = 0, repeats_ = 0, repetitions_ = 0;
};

int rounded(double v) {
    return static_cast<int>(std::floor(v + 0.5));
}

void Turtle::store(DrawContext* ctx, RECT* bounds) const {
    ctx->x = x_;
    ctx->y = y_;
    ctx->heading = heading_;
    ctx->red = red_;
    ctx->blue = blue_;
    ctx->steps = max_steps_ - left_;
    ctx->turns = right_turns_ + left_turns_;
    ctx->right_turns = right_turns_;
    ctx->left_turns = left_turns_;
    ctx->circles = circles_right_ + circles_left_;
    ctx->circles_right = circles_right_;
    ctx->circles_left = circles_left_;
    ctx->color_changes = color_changes_;
    ctx->repeats = repeats_;
    ctx->repetitions = repetitions_;
    ctx->distance = distance_;
    *bounds = {rounded(min_x_) - 2, rounded(min_y_) - 2, rounded(max_x_) + 2, rounded(max_y_) + 2};
}

// A program of two nested REPEAT_100 around two terminals.
template <class First, class Second>
void grid(Turtle& t, First first, Second second) {
    t.repeat(100);
    for (int i = 0; i < 100; ++i) {
        t.repeat(100);
        for (int j = 0; j < 100; ++j) {
            if (!t.step()) {
                return;
            }
            first();
            if (!t.step()) {
                return;
            }
            second();
        }
    }
}

void forward_and_turn(DrawContext* ctx, RECT* bounds) {
    Turtle t(*ctx);
    grid(
        t, [&] { t.forward(10); }, [&] { t.right(3); });
    t.store(ctx, bounds);
}

void forward_only(DrawContext* ctx, RECT* bounds) {
    Turtle t(*ctx);
    grid(
        t, [&] { t.forward(5); }, [&] { t.forward(2); });
    t.store(ctx, bounds);
}

void turn_and_color(DrawContext* ctx, RECT* bounds) {
    Turtle t(*ctx);
    grid(
        t, [&] { t.left(10); }, [&] { t.red(8); });
    t.store(ctx, bounds);
}

bool petal(Turtle& t) {
    t.repeat(5);
    for (int i = 0; i < 5; ++i) {
        if (!t.step()) {
            return false;
        }
        t.forward(10);
        t.repeat(3);
        for (int j = 0; j < 3; ++j) {
            if (!t.step()) {
                return false;
            }
            t.forward(2);
            if (!t.step()) {
                return false;
            }
            t.left(15);
        }
        if (!t.step()) {
            return false;
        }
        t.right(90);
    }
    return true;
}

void nested(DrawContext* ctx, RECT* bounds) {
    Turtle t(*ctx);
    t.repeat(100);
    for (int i = 0; i < 100; ++i) {
        t.repeat(10);
        for (int j = 0; j < 10; ++j) {
            if (!petal(t) || !t.step()) {
                t.store(ctx, bounds);
                return;
            }
            t.blue(3);
        }
        if (!t.step()) {
            break;
        }
        t.right(10);
    }
    t.store(ctx, bounds);
}

constexpr HandWritten kAll[] = {
    {"forward and turn", "( REPEAT_100 ( REPEAT_100 ( FWD_10 ) ( RIGHT_3 ) ) )", forward_and_turn},
    {"nested repeats",
     "( REPEAT_100 ( REPEAT_10 ( REPEAT_5 ( FWD_10 ) ( REPEAT_3 ( FWD_2 ) ( LEFT_15 ) )"
     " ( RIGHT_90 ) ) ( BLU_3 ) ) ( RIGHT_10 ) )",
     nested},
    {"forward only", "( REPEAT_100 ( REPEAT_100 ( FWD_5 ) ( FWD_2 ) ) )", forward_only},
    {"turn and colour", "( REPEAT_100 ( REPEAT_100 ( LEFT_10 ) ( RED_8 ) ) )", turn_and_color},
};

} // namespace

std::span<const HandWritten> hand_written() {
    return kAll;
}

} // namespace pelmora_bench
