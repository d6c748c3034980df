#include "turtle/interp.h"

#include "turtle/device_units.h"
#include "turtle/faults.h"
#include "turtle/heading.h"
#include "turtle/linear_code.h"
#include "turtle/path.h"
#include "turtle/pen.h"
#include "turtle/trace.h"

#include <algorithm>
#include <type_traits>

namespace pelmora {
namespace {

std::int32_t add_count(std::int32_t start, std::int64_t count) {
    return device_saturate(start + count);
}

// What the steps of a run change: the context's turtle, in a form that fits into registers.
template <class Heading, class Path>
class Turtle {
  public:
    Turtle(const DrawContext& ctx, const Path& path)
        : x_(ctx.x), y_(ctx.y), scale_x_(ctx.scale_x), scale_y_(ctx.scale_y),
          distance_(ctx.distance), path_(path), heading_(ctx.heading), pen_up_(ctx.pen_up),
          color_(color_pack(ctx.red, ctx.green, ctx.blue)) {}

    void forward(const CodeWord& word) {
        const Direction direction = heading_.direction();
        // In this order, as everywhere: pictures and scores depend on the last bit.
        x_ += direction.cos * word.distance * scale_x_;
        y_ += direction.sin * word.distance * scale_y_;
        path_.move(x_, y_, pen_up_);
        if constexpr (Path::kKeepsMoves) {
            path_.keep(heading_.place(), word.number, color_, pen_up_);
        }
        distance_ += word.distance;
    }

    void turn(const CodeWord& word) {
        turns_ += word.turns;
        heading_.turn(word.number);
    }

    void color(const CodeWord& word) { color_ = color_add(color_, word.increment); }

    void pen(const CodeWord& word) { pen_up_ = word.number; }

    // As many passes of a spin, whose `steps` words begin at `body`.
    void spin(const CodeWord* body, std::uint32_t steps, int passes);

    void renew_pen(HDC device, int width) const {
        pen_renew(device, width, color_red(color_), color_green(color_), color_blue(color_));
    }

    void finish(DrawContext* ctx) const;

  private:
    double x_, y_, scale_x_, scale_y_, distance_;
    Path path_;
    Heading heading_;
    std::int32_t pen_up_;
    PackedColor color_;
    PackedTurns turns_ = 0;
};

// In one look at the words, whatever the number of passes: what they add up to is the same each
// time.
template <class Heading, class Path>
void Turtle<Heading, Path>::spin(const CodeWord* body, std::uint32_t steps, int passes) {
    typename Heading::Sum sum;
    PackedTurns turns = 0;
    PackedColor colors = 0;
    const CodeWord* const end = body + steps;
    for (const CodeWord* word = body; word != end; ++word) {
        if (word->op == Op::turn) {
            sum.add(word->number);
            turns += word->turns;
        } else if (word->op == Op::color) {
            colors = color_add(colors, word->increment);
        } else if (word->op == Op::pen) {
            pen(*word);
        }
    }
    turns_ += turns * static_cast<PackedTurns>(passes);
    color_ = color_add_often(color_, colors, passes);
    heading_.spin(sum, passes, [&] {
        for (const CodeWord* word = body; word != end; ++word) {
            if (word->op == Op::turn) {
                heading_.turn(word->number);
            }
        }
    });
}

template <class Heading, class Path>
void Turtle<Heading, Path>::finish(DrawContext* ctx) const {
    path_.finish();
    ctx->x = x_;
    ctx->y = y_;
    ctx->heading = heading_.degrees();
    ctx->distance = distance_;
    ctx->pen_up = pen_up_;
    ctx->red = color_red(color_);
    ctx->green = color_green(color_);
    ctx->blue = color_blue(color_);
    ctx->color_changes = add_count(ctx->color_changes, color_changes(color_));
    ctx->turns = add_count(ctx->turns, turns_right(turns_) + turns_left(turns_));
    ctx->right_turns = add_count(ctx->right_turns, turns_right(turns_));
    ctx->left_turns = add_count(ctx->left_turns, turns_left(turns_));
    const Circles& circles = heading_.circles();
    ctx->circles = add_count(ctx->circles, circles.right + circles.left);
    ctx->circles_right = add_count(ctx->circles_right, circles.right);
    ctx->circles_left = add_count(ctx->circles_left, circles.left);
}

// The steps that are left. A leg is paid for when it begins; into one that is longer than what is
// left the end of the run is written, as the code is made for this run alone.
class Budget {
  public:
    explicit Budget(std::int64_t steps) : left_(steps) {}

    void pay(std::int64_t steps) { left_ -= steps; }

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

// A run of linear code.
//
// While it runs nothing is called, but for lines and unusual headings: around a call, however rare,
// the compiler would keep the whole turtle in memory. That is why new pens are left to the caller.
// The words are told apart by comparisons, the frequent ones first: they are foreseen where the one
// jump of a switch is not, on processors that guard their indirect jumps by as much as three times.
template <class Turtle>
class Run {
  public:
    Run(const Turtle& turtle, std::int64_t steps, LinearCode* code)
        : turtle_(turtle), budget_(steps), word_(code->words.at(0)), words_(word_),
          counters_(code->counters.at(0)) {
        budget_.pay(word_);
    }

    // Runs on to the end, to a spin or, if asked, to behind the next new colour. True for a colour.
    [[gnu::noinline]] bool go_on(bool stops_at_colors) {
        Run run = *this; // of its own, so that it is kept in registers
        const bool new_color = run.words_up_to_stop(stops_at_colors);
        *this = run;
        return new_color;
    }

    [[nodiscard]] bool at_spin() const { return word_->op == Op::spin; }

    // Makes all passes of the spin at once.
    void spin() {
        const CodeWord& loop = *word_;
        const CodeWord* body = word_ + 1;
        const std::int64_t steps = std::int64_t{body->leg} * loop.number;
        if (steps > budget_.left()) {
            enter_loop(); // the limit is in there
            return;
        }
        budget_.pay(steps);
        count_loop(loop);
        turtle_.spin(body, body->leg, loop.number);
        jump(loop.jump.target);
    }

    // At a loop or spin: begins its passes, to be made one by one.
    void enter_loop() {
        counters_[word_->jump.counter] = {static_cast<std::uint32_t>(word_->number),
                                          word_->jump.target};
        count_loop(*word_);
        budget_.pay(++word_);
    }

    [[nodiscard]] const Turtle& turtle() const { return turtle_; }
    [[nodiscard]] bool ended() const { return word_->op == Op::end; }
    [[nodiscard]] std::int64_t steps_left() const { return budget_.left(); }
    [[nodiscard]] std::int64_t repeats() const { return repeats_; }
    [[nodiscard]] std::int64_t repetitions() const { return repetitions_; }

  private:
    bool words_up_to_stop(bool stops_at_colors) {
        for (;;) {
            if (word_->op == Op::forward) {
                turtle_.forward(*word_++);
            } else if (word_->op == Op::turn) {
                turtle_.turn(*word_++);
            } else if (word_->op == Op::again) {
                LoopCounter& loop = counters_[word_->jump.counter];
                jump(--loop.left != 0 ? word_->jump.target : loop.done);
            } else if (word_->op == Op::color) {
                turtle_.color(*word_++);
                if (stops_at_colors) {
                    return true;
                }
            } else if (!rarer_word()) {
                return false;
            }
        }
    }

    // False at the end, at the limit and at a spin.
    bool rarer_word() {
        if (word_->op == Op::pen) {
            turtle_.pen(*word_++);
        } else if (word_->op == Op::loop) {
            enter_loop();
        } else if (word_->op == Op::add) {
            repeats_ += word_->tally.repeats;
            repetitions_ += word_->tally.repetitions;
            ++word_;
        } else if (word_->op == Op::go) {
            jump(word_->jump.target);
        } else if (word_->op == Op::idle) {
            ++word_;
        } else {
            return false;
        }
        return true;
    }

    void count_loop(const CodeWord& loop) {
        repeats_ += 1;
        repetitions_ += loop.number;
    }

    void jump(std::uint32_t target) {
        word_ = words_ + target;
        budget_.pay(word_);
    }

    Turtle turtle_;
    Budget budget_;
    CodeWord* word_; // the next
    CodeWord* words_;
    LoopCounter* counters_;
    std::int64_t repeats_ = 0;
    std::int64_t repetitions_ = 0;
};

template <class Heading, class Path>
int run(HDC device, DrawContext* ctx, const Path& path, std::int64_t steps, LinearCode* code) {
    Run<Turtle<Heading, Path>> run({*ctx, path}, steps, code);
    for (;;) {
        if (run.go_on(device != nullptr)) {
            run.turtle().renew_pen(device, ctx->pen_width);
            continue;
        }
        if (!run.at_spin()) {
            break;
        }
        if constexpr (std::is_same_v<Heading, WholeHeading>) {
            if (device == nullptr) { // a device is due every colour on the way
                run.spin();
                continue;
            }
        }
        run.enter_loop();
    }
    run.turtle().finish(ctx);
    ctx->repeats = add_count(ctx->repeats, run.repeats());
    ctx->repetitions = add_count(ctx->repetitions, run.repetitions());
    // A step that was one too many is counted, too.
    ctx->steps = add_count(ctx->steps, run.ended() ? steps - run.steps_left() : steps + 1);
    return run.ended() ? 1 : 0;
}

template <class Path>
int run(HDC device, DrawContext* ctx, const Path& path, std::int64_t steps, LinearCode* code) {
    return WholeHeading::takes(ctx->heading) ? run<WholeHeading>(device, ctx, path, steps, code)
                                             : run<RealHeading>(device, ctx, path, steps, code);
}

PenState start_pen(const DrawContext& ctx) {
    return ctx.pen_up == 1 ? 1 : 0;
}

std::int64_t steps_allowed(const DrawContext& ctx) {
    return std::max<std::int64_t>(std::int64_t{ctx.max_steps} - ctx.steps, 0);
}

} // namespace

int interp_logo(HDC device, DrawContext* ctx, const ExprNode* node, RECT* bounds) {
    const PenState pen = start_pen(*ctx);
    const std::int64_t steps = steps_allowed(*ctx);
    Outline outline;
    outline_survey(node, pen, steps, &outline);
    if (outline.functions.at(0)->pass[pen].cost.lines != 0) {
        faults_report(outline, pen, steps);
    }
    LinearCode code;
    linear_code_assemble(outline, pen, Work::steps, &code);
    return bounds != nullptr ? run(device, ctx, MeasuredPath(bounds), steps, &code)
                             : run(device, ctx, DrawnPath(device, ctx->x, ctx->y), steps, &code);
}

bool interp_trace(DrawContext* ctx, const ExprNode* node, RECT* bounds, Trace* trace) {
    const PenState pen = start_pen(*ctx);
    const std::int64_t steps = steps_allowed(*ctx);
    if (steps > kMostTracedMoves || !WholeHeading::takes(ctx->heading)) {
        return false;
    }
    Outline outline;
    outline_survey(node, pen, steps, &outline);
    if (outline.functions.at(0)->pass[pen].cost.lines != 0) {
        return false;
    }
    LinearCode code;
    linear_code_assemble(outline, pen, Work::steps, &code);
    run<WholeHeading>(nullptr, ctx, TracedPath(bounds, trace), steps, &code);
    return true;
}

} // namespace pelmora
