#include "turtle/draw.h"

#include "tests/support/trees.h"
#include "tests/turtle/recording_device.h"
#include "turtle/heading_table.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>

namespace pelmora_test {
namespace {

using namespace pelmora;

DrawContext fresh(double multiplier) {
    DrawContext ctx{};
    ctx.max_steps = kDefaultMaxSteps;
    ctx.multipliers.fill(multiplier);
    draw_reset(&ctx);
    return ctx;
}

TEST(Draw, FitsThePictureIntoItsTarget) {
    const struct {
        const char* program;
        int width, height;
        FitMode mode;
        int y_offset;
        double origin_x, origin_y, scale_x, scale_y;
        const char* lines;
    } cases[] = {
        {"( LEFT_90 )", 100, 100, FitMode::stretch, 0, 50, 50, 25, -25, ""},
        {"( FWD_10 )", 140, 40, FitMode::stretch, 0, 20, 20, 10, -10, "move 20,20\nline 120,20\n"},
        {"( FWD_10 )", 140, 40, FitMode::stretch, 7, 20, 27, 10, -10, "move 20,27\nline 120,27\n"},
        {"( FWD_10 )", 140, 140, FitMode::uniform, 7, 20, 20, 10, -10, "move 20,20\nline 120,20\n"},
        {nullptr, 8, 4, FitMode::stretch, 0, 4, 2, 2, -1, ""},
        // Thirds: kept in single precision by stretch alone.
        {"( LEFT_90 )", 3, 4, FitMode::stretch, 0, 1.5, 2, 0.75, -1, ""},
        {"( FWD_2 )", 1, 4, FitMode::stretch, 0, 2 * (1.F / 6), 2, 1.F / 6, -1, ""},
        {"( FWD_2 )", 1, 4, FitMode::uniform, 0, 2 * (1. / 6), 2 * (1. / 6), 1. / 6, -1. / 6, ""},
    };
    for (const auto& c : cases) {
        DrawContext ctx = fresh(0);
        take_record();
        const ExprTree tree = c.program == nullptr ? nullptr : tree_of(c.program);
        draw_fit(recording_device(), &ctx, tree.get(), c.width, c.height, c.mode, c.y_offset);
        EXPECT_EQ(ctx.origin_x, c.origin_x);
        EXPECT_EQ(ctx.origin_y, c.origin_y);
        EXPECT_EQ(ctx.scale_x, c.scale_x);
        EXPECT_EQ(ctx.scale_y, c.scale_y);
        if (c.width >= 100) {
            const std::string pen = *c.lines != 0 ? "pen 0,0\nselect 1\ndelete 0\n" : "";
            EXPECT_EQ(take_record(), pen + c.lines);
        }
    }
}

TEST(Draw, LeavesTheDeviceItsOwnPen) {
    DrawContext ctx = fresh(0);
    ctx.pen_width = 3;
    ctx.red = 250;
    RECT bounds;
    take_record();
    {
        const DevicePen last(recording_device());
        draw_run(recording_device(), &ctx, tree_of("( BLOCK ( RED_8 ) ( BLU_1 ) ( FWD_1 ) )").get(),
                 &bounds);
    }
    EXPECT_EQ(take_record(), "pen 3,250\nselect 1\ndelete 0\npen 3,2\nselect 2\ndelete 1\n"
                             "pen 3,65538\nselect 3\ndelete 2\nstock 7\nselect 0\ndelete 3\n");
}

TEST(Draw, Scores) {
    const std::pair<const char*, double> programs[] = {
        {"( FWD_100 )", 100 * 0.002},
        {"( REPEAT_10 ( RIGHT_45 ) )", 10 * 0.002 + 1 * 0.1 + 10 * 0.01 + 1 * 0.2},
        {"( REPEAT_5 ( RIGHT_45 ) )", 5 * 0.002 + 1 * 0.1 + 5 * 0.01},
        {"( REPEAT_2 ( PEN_UP ) ( GRN_1 ) )", 2 * 0.002 + 1 * 0.1 + 2 * 0.05},
        {"( BLOCK )", 0},
    };
    for (const auto& [program, score] : programs) {
        DrawContext ctx = fresh(1);
        draw_run(nullptr, &ctx, tree_of(program).get(), nullptr);
        EXPECT_EQ(draw_score(&ctx), score) << program;
    }
    DrawContext ctx = fresh(1);
    ctx.distance = 60000;
    EXPECT_EQ(draw_score(&ctx), 100);
    ctx.turns = ctx.circles = ctx.color_changes = ctx.repeats = ctx.repetitions = INT32_MAX;
    EXPECT_DOUBLE_EQ(draw_score(&ctx), 600);
    ctx.multipliers = {1, 2, 4, 8, 16, 32};
    EXPECT_DOUBLE_EQ(draw_score(&ctx), 6300);
}

// C libraries differ in the last bit, which is what the table is for: so its bits are held by a
// sum.
TEST(HeadingTable, HoldsTheCosinesAndSines) {
    constexpr double kLastBit = 1.2e-16;
    std::uint64_t sum = 0;
    for (int heading = -360; heading <= 360; ++heading) {
        const double angle = heading * kTurnPerDegree * kRadiansPerTurn;
        const Direction& direction = kDirections[static_cast<std::size_t>(heading + 360)];
        EXPECT_NEAR(direction.cos, std::cos(angle), kLastBit) << heading;
        EXPECT_NEAR(direction.sin, std::sin(angle), kLastBit) << heading;
        EXPECT_EQ(std::signbit(direction.sin), std::signbit(std::sin(angle))) << heading;
        for (const double number : {direction.cos, direction.sin}) {
            sum = sum * 31 + std::bit_cast<std::uint64_t>(number);
        }
    }
    EXPECT_EQ(sum, 8957950805528266310U);
}

} // namespace
} // namespace pelmora_test
