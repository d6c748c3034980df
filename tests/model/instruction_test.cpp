#include "model/instruction.h"

#include <gtest/gtest.h>

namespace pelmora {
namespace {

TEST(Instruction, EveryNameLeadsBackToItsCodeAndNearMissesLeadNowhere) {
    for (const Instruction& row : kInstructions) {
        EXPECT_EQ(op_lookup(row.name), row.code) << row.name;
        EXPECT_STREQ(op_name(row.code), row.name);
    }
    for (const char* name :
         {"", "fwd_1", "FWD_4", "FWD_1 ", "FWD_", "FWD_1000", "BLOCK)", "\xff"}) {
        EXPECT_EQ(op_lookup(name), NO_OP) << name;
    }
}

TEST(Instruction, FamiliesKeepTheirCodesAndParameters) {
    const struct {
        int first;
        OpFamily family;
        std::vector<int> parameters;
    } families[] = {
        {1, OpFamily::pen, {1, 0}},
        {3, OpFamily::forward, {1, 2, 3, 5, 10, 50, 100}},
        {10, OpFamily::turn, {1, 2, 3, 5, 10, 15, 45, 90, -1, -2, -3, -5, -10, -15, -45, -90}},
        {26, OpFamily::red, {1, 2, 3, 8, 16, 32, 64}},
        {33, OpFamily::green, {1, 2, 3, 8, 16, 32, 64}},
        {40, OpFamily::blue, {1, 2, 3, 8, 16, 32, 64}},
        {47, OpFamily::block, {1}},
        {48, OpFamily::branch, {1, 0}},
        {50, OpFamily::repeat, {2, 3, 5, 10, 50, 100}},
    };
    int code = 1;
    for (const auto& family : families) {
        EXPECT_EQ(code, family.first);
        for (const int parameter : family.parameters) {
            const Instruction* row = op_instruction(code);
            ASSERT_NE(row, nullptr);
            EXPECT_EQ(row->family, family.family) << row->name;
            EXPECT_EQ(row->parameter, parameter) << row->name;
            ++code;
        }
    }
    EXPECT_EQ(code, 56);
    EXPECT_EQ(op_lookup("REPEAT_100"), 55);
    EXPECT_EQ(op_kind(static_cast<OpCode>(46)), TERMINAL);
    EXPECT_EQ(op_kind(static_cast<OpCode>(47)), FUNCTION);
}

TEST(Instruction, UnknownCodesShareOneBuffer) {
    const char* first = op_name(56);
    EXPECT_STREQ(first, "UNKNOWN[56]");
    EXPECT_EQ(op_name(-1), first);
    EXPECT_STREQ(first, "UNKNOWN[-1]");
}

} // namespace
} // namespace pelmora
