#include "model/instruction.h"

#include <gtest/gtest.h>

namespace pelmora {
namespace {

TEST(Instruction, EveryNameIsFoundWithItsCode) {
    for (const Instruction& row : kInstructions) {
        EXPECT_EQ(op_lookup(row.name), row.code) << row.name;
        EXPECT_STREQ(op_name(row.code), row.name);
    }
    EXPECT_EQ(op_lookup("REPEAT_100"), 55);
    for (const char* name : {"", "fwd_1", "FWD_4", "FWD_1 ", "FWD_", "FWD_1000", "\xff"}) {
        EXPECT_EQ(op_lookup(name), NO_OP) << name;
    }
    const char* unknown = op_name(56);
    EXPECT_STREQ(unknown, "UNKNOWN[56]");
    EXPECT_EQ(op_name(-1), unknown);
    EXPECT_STREQ(unknown, "UNKNOWN[-1]");
}

} // namespace
} // namespace pelmora
