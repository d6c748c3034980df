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

TEST(Draw, RestoresTheDevicesOwnPen) {
    DrawContext ctx{};
    ctx.max_steps = kDefaultMaxSteps;
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

// The digests of tests/agreement cover the summands.
TEST(Draw, ScoreTermsAreCappedAtAHundred) {
    DrawContext ctx{};
    ctx.distance = 60000;
    ctx.turns = ctx.circles = ctx.color_changes = ctx.repeats = ctx.repetitions = INT32_MAX;
    ctx.multipliers = {1, 2, 4, 8, 16, 32};
    EXPECT_DOUBLE_EQ(draw_score(&ctx), 6300);
    ctx.color_changes = 0; // in a population their weight is often that of the repeats
    EXPECT_DOUBLE_EQ(draw_score(&ctx), 5500);
}

// C libraries differ in the last bit, so a checksum verifies the bits of the table.
TEST(HeadingTable, HoldsTheCosinesAndSines) {
    constexpr double kLastBit = 1.2e-16;
    std::uint64_t sum = 0;
    for (int heading = -360; const Direction& direction : kDirections) {
        const double angle = heading * kTurnPerDegree * kRadiansPerTurn;
        EXPECT_NEAR(direction.cos, std::cos(angle), kLastBit) << heading;
        EXPECT_NEAR(direction.sin, std::sin(angle), kLastBit) << heading;
        EXPECT_EQ(std::signbit(direction.sin), std::signbit(std::sin(angle))) << heading;
        for (const double number : {direction.cos, direction.sin}) {
            sum = sum * 31 + std::bit_cast<std::uint64_t>(number);
        }
        ++heading;
    }
    EXPECT_EQ(sum, 8957950805528266310U);
}

} // namespace
} // namespace pelmora_test
