#include "bench/hand_written.h"

#include "bench/bare_turtle.h"

namespace pelmora_bench {
namespace {

using pelmora::DrawContext;

class Turtle : public BareTurtle {
  public:
    explicit Turtle(const DrawContext& ctx) : BareTurtle(ctx), left_(ctx.max_steps) {}

    // Whether there is one more step.
    bool step() { return left_-- > 0; }

    void repeat(int times) {
        ++repeats_;
        repetitions_ += times;
    }

    void finish(DrawContext* ctx, RECT* bounds) const {
        store(ctx->max_steps - left_, repeats_, repetitions_, ctx, bounds);
    }

  private:
    int left_;
    int repeats_ = 0, repetitions_ = 0;
};

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
        t, [&] { t.forward(10); }, [&] { t.turn(3); });
    t.finish(ctx, bounds);
}

void forward_only(DrawContext* ctx, RECT* bounds) {
    Turtle t(*ctx);
    grid(
        t, [&] { t.forward(5); }, [&] { t.forward(2); });
    t.finish(ctx, bounds);
}

void turn_and_color(DrawContext* ctx, RECT* bounds) {
    Turtle t(*ctx);
    grid(
        t, [&] { t.turn(-10); }, [&] { t.color(0, 8); });
    t.finish(ctx, bounds);
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
            t.turn(-15);
        }
        if (!t.step()) {
            return false;
        }
        t.turn(90);
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
                t.finish(ctx, bounds);
                return;
            }
            t.color(2, 3);
        }
        if (!t.step()) {
            break;
        }
        t.turn(10);
    }
    t.finish(ctx, bounds);
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
