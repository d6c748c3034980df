#include "turtle/interp.h"

#include "tests/support/failing_new.h"
#include "tests/support/trees.h"
#include "tests/turtle/plain_interp.h"
#include "tests/turtle/recording_device.h"
#include "turtle/history.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <deque>
#include <random>
#include <sstream>

namespace pelmora_test {
namespace {

using namespace pelmora;

// Owner of trees of any shape, valid or not; a node may have several parents.
class Grove {
  public:
    ExprNode* node(int kind, int op, std::vector<ExprNode*> children = {}) {
        arrays_.push_back(std::move(children));
        nodes_.push_back({static_cast<NodeKind>(kind), static_cast<OpCode>(op),
                          static_cast<std::int16_t>(arrays_.back().size()), arrays_.back().data(),
                          nullptr});
        return &nodes_.back();
    }
    ExprNode* leaf(int op) { return node(TERMINAL, op); }
    ExprNode* call(int op, std::vector<ExprNode*> children) {
        return node(FUNCTION, op, std::move(children));
    }
    // `n` functions nested around `inner`; 32,767 times `n` siblings.
    ExprNode* nested(int op, int n, ExprNode* inner) {
        for (; n > 0; --n) {
            inner = call(op, {inner});
        }
        return inner;
    }
    ExprNode* many(int n, ExprNode* one) {
        return call(BLOCK, std::vector(static_cast<std::size_t>(n),
                                       call(BLOCK, std::vector<ExprNode*>(32767, one))));
    }

  private:
    std::deque<ExprNode> nodes_;
    std::deque<std::vector<ExprNode*>> arrays_;
};

class Dice {
  public:
    explicit Dice(unsigned seed) : random_(seed) {}
    int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
    bool one_in(int n) { return below(n) == 0; }

  private:
    std::mt19937 random_;
};

// Few kinds of terminals, so that the pen changes often; all kinds of faults, each of them rare.
ExprNode* random_tree(Grove& grove, Dice& dice, int depth) {
    if (dice.one_in(40)) {
        return dice.one_in(2) ? nullptr : grove.node(2, dice.below(60));
    }
    if (depth == 0 || dice.one_in(3)) {
        return grove.leaf(dice.one_in(3) ? 1 + dice.below(2) : dice.below(60));
    }
    std::vector<ExprNode*> children(static_cast<std::size_t>(dice.below(5)));
    for (ExprNode*& child : children) {
        child = random_tree(grove, dice, depth - 1);
    }
    const int op = dice.one_in(20) ? dice.below(256) : BLOCK + dice.below(6);
    ExprNode* node = grove.call(dice.one_in(9) ? REPEAT_10 : op, std::move(children));
    const bool is_branch = node->op == IF_PEN_UP || node->op == IF_PEN_DOWN;
    if (is_branch && dice.one_in(9)) {
        node->children = nullptr;
    }
    return node;
}

// Repeats of turns alone, large and small ones, so that the heading wraps at every place.
ExprNode* random_spins(Grove& grove, Dice& dice) {
    constexpr OpCode kOps[] = {RIGHT_45, RIGHT_90, LEFT_45, LEFT_90,
                               RIGHT_1,  LEFT_2,   RED_64,  PEN_UP};
    std::vector<ExprNode*> spins;
    for (int i = 1 + dice.below(4); i > 0; --i) {
        std::vector<ExprNode*> turns(static_cast<std::size_t>(1 + dice.below(6)));
        for (ExprNode*& turn : turns) {
            turn = grove.leaf(kOps[dice.below(dice.one_in(2) ? 4 : 8)]);
        }
        spins.push_back(grove.call(dice.one_in(2) ? REPEAT_100 : REPEAT_10, std::move(turns)));
        spins.push_back(grove.leaf(FWD_1));
    }
    return grove.call(dice.one_in(2) ? REPEAT_3 : BLOCK, std::move(spins));
}

DrawContext random_start(Dice& dice) {
    DrawContext ctx;
    std::memset(&ctx, 0, sizeof ctx);
    const double headings[] = {0, -0.0, 90, -360, 360, 77.25, dice.below(721) - 360.0};
    ctx.heading = headings[dice.below(7)];
    ctx.x = dice.below(100) / 7.0;
    ctx.scale_x = dice.one_in(2) ? 1 : 2.5;
    ctx.scale_y = dice.one_in(2) ? 1 : -0.3;
    ctx.steps = dice.one_in(4) ? dice.below(10) : 0;
    ctx.max_steps = dice.one_in(2) ? dice.below(60) : 3000;
    ctx.pen_up = dice.below(3);
    ctx.pen_width = dice.below(3);
    ctx.red = dice.below(256);
    ctx.repetitions = dice.one_in(4) ? INT32_MAX - dice.below(40) : dice.below(9);
    ctx.turns = dice.below(9);
    ctx.distance = dice.below(9) / 3.0;
    return ctx;
}

ExprNode* random_program(Grove& grove, Dice& dice) {
    return dice.one_in(5) ? random_spins(grove, dice) : random_tree(grove, dice, 1 + dice.below(7));
}

TEST(Interp, MatchesThePlainInterpreter) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        Dice dice(seed);
        Grove grove;
        const ExprNode* tree = random_program(grove, dice);
        const DrawContext start = random_start(dice);
        DrawContext plain_ctx = start;
        DrawContext ctx = start;
        RECT plain_bounds{-1, 0, 5, 2};
        RECT bounds = plain_bounds;
        const bool measures = dice.one_in(2);
        const HDC device = dice.one_in(4) ? nullptr : recording_device();

        const PlainRun plain =
            plain_interp(device, &plain_ctx, tree, measures ? &plain_bounds : nullptr);
        const std::string plain_record = take_record();
        testing::internal::CaptureStderr();
        const int result = interp_logo(device, &ctx, tree, measures ? &bounds : nullptr);
        ASSERT_EQ(testing::internal::GetCapturedStderr(), plain.lines) << seed;
        ASSERT_EQ(result, plain.result) << seed;
        ASSERT_EQ(take_record(), plain_record) << seed;
        // Both are copies of one record, padding included. NOLINTNEXTLINE(*-comparison,cert-*)
        ASSERT_EQ(std::memcmp(&ctx, &plain_ctx, sizeof ctx), 0) << seed;
        ASSERT_EQ(std::memcmp(&bounds, &plain_bounds, sizeof bounds), 0) << seed;
    }
}

// The visible part of a record: the lines that have a length, each in its colour.
std::string visible(const std::string& record) {
    std::istringstream in(record);
    std::string lines, color, at;
    for (std::string what, value; in >> what >> value;) {
        if (what == "pen") {
            color = value;
        } else if (what == "line" && value != at) {
            lines += color + " " + at + " " + value + "\n";
        }
        at = what == "line" || what == "move" ? value : at;
    }
    return lines;
}

TEST(Interp, DrawsInOneRunLikeTwoPlainRuns) {
    for (unsigned seed = 0; seed < 5000; ++seed) {
        Dice dice(seed);
        Grove grove;
        const ExprNode* tree = random_program(grove, dice);
        DrawContext start = random_start(dice);
        start.home = start;
        start.home.green = dice.below(256);
        start.home.blue = dice.below(256);
        start.max_steps = dice.one_in(9) ? kDefaultMaxSteps + 1 : start.max_steps;
        const FitMode mode = dice.one_in(2) ? FitMode::stretch : FitMode::uniform;

        DrawContext plain = start;
        draw_reset(&plain);
        plain.x = plain.y = 0;
        RECT bounds{};
        std::string log = plain_interp(nullptr, &plain, tree, &bounds).lines;
        rect_inset(&bounds, -2, -2);
        draw_place(&plain, bounds, 88, 50, mode, 7);
        plain.x = plain.origin_x;
        plain.y = plain.origin_y;
        pen_renew(recording_device(), plain.pen_width, turtle_color(plain));
        log += plain_interp(recording_device(), &plain, tree, nullptr).lines;
        const std::string plain_lines = visible(take_record());

        DrawContext ctx = start;
        testing::internal::CaptureStderr();
        draw_fit(recording_device(), &ctx, tree, 88, 50, mode, 7);
        ASSERT_EQ(testing::internal::GetCapturedStderr(), log) << seed;
        ASSERT_EQ(visible(take_record()), plain_lines) << seed;
        // NOLINTNEXTLINE(*-comparison,cert-*)
        ASSERT_EQ(std::memcmp(&ctx, &plain, sizeof ctx), 0) << seed;
    }
}

DrawContext run(const ExprNode* tree, int max_steps = kDefaultMaxSteps) {
    DrawContext ctx{};
    ctx.max_steps = max_steps;
    draw_reset(&ctx);
    draw_run(nullptr, &ctx, tree, nullptr);
    return ctx;
}

// The nodes that a run walks: with the steps they bound its work.
std::int64_t nodes_walked(const ExprNode* tree, std::int64_t steps) {
    History history(tree, 0, steps);
    while (!history.next().empty()) {
    }
    return history.nodes_walked();
}

// Without this bound each of these would take hours or exhaust the memory.
TEST(Interp, WalksANodeOnceForEachPenStateAndInThePassThatIsCut) {
    Grove grove;
    ExprNode* step = grove.leaf(FWD_1);
    const auto holds = [](const ExprNode* tree, std::int64_t nodes, int max_steps) {
        EXPECT_EQ(run(tree, max_steps).steps, max_steps + 1);
        EXPECT_LE(nodes_walked(tree, max_steps), 3 * nodes);
    };
    ExprNode* nothing = grove.nested(REPEAT_100, 9, grove.call(BLOCK, {}));
    EXPECT_EQ(run(nothing).steps, 0);
    EXPECT_EQ(run(nothing).repetitions, INT32_MAX);
    EXPECT_EQ(nodes_walked(nothing, kDefaultMaxSteps), 10);

    ExprNode* skipped = grove.call(IF_PEN_UP, {step, grove.call(REPEAT_2, {})});
    ExprNode* branches = grove.many(7, skipped); // each with its chosen child
    holds(grove.nested(REPEAT_100, 3, grove.call(BLOCK, {branches, step})), 2 * 7 * 32'767 + 13,
          kDefaultMaxSteps);

    // A pass that lifts the pen and leaves nothing to do for the next, repeated a million times.
    ExprNode* lift = grove.call(IF_PEN_DOWN, {grove.leaf(PEN_UP), grove.call(BLOCK, {})});
    ExprNode* lifts = grove.nested(REPEAT_2, 200'000, lift);
    holds(grove.nested(REPEAT_100, 3, grove.call(BLOCK, {grove.leaf(PEN_DOWN), lifts})), 200'010,
          kDefaultMaxSteps);

    // Every pass inverts the pen.
    ExprNode* toggle = grove.call(IF_PEN_UP, {grove.leaf(PEN_DOWN), grove.leaf(PEN_UP)});
    ExprNode* toggles = grove.nested(REPEAT_3, 200'000, grove.call(BLOCK, {toggle, step}));
    holds(toggles, 200'005, INT16_MAX);
    EXPECT_EQ(run(toggles, INT16_MAX).distance, 16383);

    // Every repeat has children without steps, and changes the pen state.
    ExprNode* idle = grove.call(BLOCK, {});
    ExprNode* never = grove.call(IF_PEN_UP, {idle, idle});
    ExprNode* deep = grove.leaf(PEN_UP);
    for (int i = 0; i < 200'000; ++i) {
        deep = grove.call(REPEAT_2, {never, deep});
    }
    holds(deep, 600'001, kDefaultMaxSteps);
}

// More terminals than the history holds, with passes of any length.
TEST(Interp, ContinuesWhenTheHistoryIsFull) {
    Grove grove;
    ExprNode* toggle = grove.call(IF_PEN_UP, {grove.leaf(PEN_DOWN), grove.leaf(PEN_UP)});
    ExprNode* pass = grove.call(
        BLOCK, {toggle, grove.leaf(FWD_3), grove.leaf(RIGHT_10), grove.call(IF_PEN_UP, {})});
    for (const int length : {1, 300'000, 1'100'000}) {
        ExprNode* tail = grove.call(REPEAT_100, std::vector(length / 100 + 1, grove.leaf(RED_1)));
        const ExprNode* tree = grove.nested(REPEAT_100, 2, grove.call(REPEAT_50, {pass, tail}));
        DrawContext plain{};
        plain.max_steps = 2'500'000;
        plain.scale_x = plain.scale_y = 1;
        DrawContext ctx = plain;
        RECT plain_bounds{};
        RECT bounds{};
        const PlainRun wanted = plain_interp(nullptr, &plain, tree, &plain_bounds);
        testing::internal::CaptureStderr();
        EXPECT_EQ(interp_logo(nullptr, &ctx, tree, &bounds), wanted.result);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), wanted.lines);
        // NOLINTNEXTLINE(*-comparison,cert-*)
        EXPECT_EQ(std::memcmp(&ctx, &plain, sizeof ctx), 0) << length;
        EXPECT_EQ(std::memcmp(&bounds, &plain_bounds, sizeof bounds), 0) << length;
    }
}

TEST(Interp, RunsAMillionLevels) {
    Grove grove;
    ExprNode* chain = grove.leaf(FWD_1);
    for (int i = 0; i < 1'000'000; ++i) {
        chain = grove.call(i % 3 == 0 ? IF_PEN_DOWN : BLOCK, {chain, grove.leaf(RED_1)});
    }
    EXPECT_EQ(run(chain, INT32_MAX).steps, 666'667);
    EXPECT_EQ(run(grove.nested(REPEAT_2, 1'000'000, chain)).steps, kDefaultMaxSteps + 1);
}

TEST(Interp, LimitsTheLogOfARun) {
    Grove grove;
    ExprNode* fault = grove.call(IF_PEN_UP, {});
    testing::internal::CaptureStderr();
    const DrawContext out = run(grove.nested(REPEAT_100, 5, fault));
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(out.repeats, 101'010'101);
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 10240);
    EXPECT_EQ(log.substr(0, 39), "ERROR INTERPLOGO: NUM CHILDREN is 0!\nER");
}

TEST(Interp, EndsTheProgramOutOfMemory) {
    Grove grove;
    const ExprNode* deep = grove.nested(BLOCK, 100, grove.leaf(FWD_1));
    const auto fail = [&] {
        const FailingNew failing(0);
        run(deep);
    };
    EXPECT_EXIT(fail(), testing::ExitedWithCode(2), "^fatal - out of memory\n$");
}

} // namespace
} // namespace pelmora_test
