// The instruction set: 55 instructions in one table. A code without its row, or a row out of order,
// does not compile. Of a new family the compiler only reports the switch in files/eps.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace pelmora {

// Whether a node acts itself or runs its children.
enum NodeKind : std::int8_t { TERMINAL = 0, FUNCTION = 1 };

// Instruction codes. 0 is no instruction. Terminals come first, those that move, turn or lift the
// pen before those that change its colour, functions last: random growth draws from these ranges.
enum OpCode : std::uint8_t {
    NO_OP = 0,
    PEN_UP,
    PEN_DOWN,
    // clang-format off
    FWD_1, FWD_2, FWD_3, FWD_5, FWD_10, FWD_50, FWD_100,
    RIGHT_1, RIGHT_2, RIGHT_3, RIGHT_5, RIGHT_10, RIGHT_15, RIGHT_45, RIGHT_90,
    LEFT_1, LEFT_2, LEFT_3, LEFT_5, LEFT_10, LEFT_15, LEFT_45, LEFT_90,
    RED_1, RED_2, RED_3, RED_8, RED_16, RED_32, RED_64,
    GRN_1, GRN_2, GRN_3, GRN_8, GRN_16, GRN_32, GRN_64,
    BLU_1, BLU_2, BLU_3, BLU_8, BLU_16, BLU_32, BLU_64,
    BLOCK,
    IF_PEN_UP,
    IF_PEN_DOWN,
    REPEAT_2, REPEAT_3, REPEAT_5, REPEAT_10, REPEAT_50, REPEAT_100,
    // clang-format on
};

inline constexpr OpCode kFirstMoveOp = PEN_UP;
inline constexpr OpCode kLastMoveOp = LEFT_90;
inline constexpr OpCode kFirstColorOp = RED_1;
inline constexpr OpCode kLastColorOp = BLU_64;
inline constexpr OpCode kFirstFunctionOp = BLOCK;
inline constexpr OpCode kLastFunctionOp = REPEAT_100;

// What an instruction does; together with the parameter it is the instruction's whole meaning.
enum class OpFamily : std::uint8_t {
    pen,     // parameter: the new pen state, 1 up, 0 down
    forward, // parameter: distance in turtle units
    turn,    // parameter: degrees, positive to the right
    red,     // parameter of the three colours: increment, modulo 256
    green,
    blue,
    block,  // runs its children once
    branch, // parameter: the pen state in which the first child is chosen, else the second
    repeat, // parameter: number of passes over the children
};

struct Instruction {
    OpCode code;
    const char* name; // also its token in the text form
    OpFamily family;
    std::int16_t parameter;
};

// Every instruction, in code order without a gap: the row of code c is kInstructions[c - 1].
inline constexpr auto kInstructions = std::to_array<Instruction>({
    {PEN_UP, "PEN_UP", OpFamily::pen, 1},
    {PEN_DOWN, "PEN_DOWN", OpFamily::pen, 0},
    {FWD_1, "FWD_1", OpFamily::forward, 1},
    {FWD_2, "FWD_2", OpFamily::forward, 2},
    {FWD_3, "FWD_3", OpFamily::forward, 3},
    {FWD_5, "FWD_5", OpFamily::forward, 5},
    {FWD_10, "FWD_10", OpFamily::forward, 10},
    {FWD_50, "FWD_50", OpFamily::forward, 50},
    {FWD_100, "FWD_100", OpFamily::forward, 100},
    {RIGHT_1, "RIGHT_1", OpFamily::turn, 1},
    {RIGHT_2, "RIGHT_2", OpFamily::turn, 2},
    {RIGHT_3, "RIGHT_3", OpFamily::turn, 3},
    {RIGHT_5, "RIGHT_5", OpFamily::turn, 5},
    {RIGHT_10, "RIGHT_10", OpFamily::turn, 10},
    {RIGHT_15, "RIGHT_15", OpFamily::turn, 15},
    {RIGHT_45, "RIGHT_45", OpFamily::turn, 45},
    {RIGHT_90, "RIGHT_90", OpFamily::turn, 90},
    {LEFT_1, "LEFT_1", OpFamily::turn, -1},
    {LEFT_2, "LEFT_2", OpFamily::turn, -2},
    {LEFT_3, "LEFT_3", OpFamily::turn, -3},
    {LEFT_5, "LEFT_5", OpFamily::turn, -5},
    {LEFT_10, "LEFT_10", OpFamily::turn, -10},
    {LEFT_15, "LEFT_15", OpFamily::turn, -15},
    {LEFT_45, "LEFT_45", OpFamily::turn, -45},
    {LEFT_90, "LEFT_90", OpFamily::turn, -90},
    {RED_1, "RED_1", OpFamily::red, 1},
    {RED_2, "RED_2", OpFamily::red, 2},
    {RED_3, "RED_3", OpFamily::red, 3},
    {RED_8, "RED_8", OpFamily::red, 8},
    {RED_16, "RED_16", OpFamily::red, 16},
    {RED_32, "RED_32", OpFamily::red, 32},
    {RED_64, "RED_64", OpFamily::red, 64},
    {GRN_1, "GRN_1", OpFamily::green, 1},
    {GRN_2, "GRN_2", OpFamily::green, 2},
    {GRN_3, "GRN_3", OpFamily::green, 3},
    {GRN_8, "GRN_8", OpFamily::green, 8},
    {GRN_16, "GRN_16", OpFamily::green, 16},
    {GRN_32, "GRN_32", OpFamily::green, 32},
    {GRN_64, "GRN_64", OpFamily::green, 64},
    {BLU_1, "BLU_1", OpFamily::blue, 1},
    {BLU_2, "BLU_2", OpFamily::blue, 2},
    {BLU_3, "BLU_3", OpFamily::blue, 3},
    {BLU_8, "BLU_8", OpFamily::blue, 8},
    {BLU_16, "BLU_16", OpFamily::blue, 16},
    {BLU_32, "BLU_32", OpFamily::blue, 32},
    {BLU_64, "BLU_64", OpFamily::blue, 64},
    {BLOCK, "BLOCK", OpFamily::block, 1},
    {IF_PEN_UP, "IF_PEN_UP", OpFamily::branch, 1},
    {IF_PEN_DOWN, "IF_PEN_DOWN", OpFamily::branch, 0},
    {REPEAT_2, "REPEAT_2", OpFamily::repeat, 2},
    {REPEAT_3, "REPEAT_3", OpFamily::repeat, 3},
    {REPEAT_5, "REPEAT_5", OpFamily::repeat, 5},
    {REPEAT_10, "REPEAT_10", OpFamily::repeat, 10},
    {REPEAT_50, "REPEAT_50", OpFamily::repeat, 50},
    {REPEAT_100, "REPEAT_100", OpFamily::repeat, 100},
});

static_assert(kInstructions.size() == kLastFunctionOp);
static_assert([] {
    for (std::size_t i = 0; i < kInstructions.size(); ++i) {
        if (kInstructions[i].code != i + 1) {
            return false;
        }
    }
    return true;
}());

// The row of `code`, or null for a code that is no instruction.
constexpr const Instruction* op_instruction(int code) {
    return code >= 1 && code <= static_cast<int>(kInstructions.size())
               ? &kInstructions[static_cast<std::size_t>(code) - 1]
               : nullptr;
}

// The kind that a node with this instruction has.
constexpr NodeKind op_kind(OpCode code) {
    return code >= kFirstFunctionOp ? FUNCTION : TERMINAL;
}

// The name of an instruction. For a code outside the table, "UNKNOWN[%d]" with the code, in one
// static buffer that the next such call overwrites.
const char* op_name(int code);

// The code whose name equals `name` byte for byte, or NO_OP when there is none.
OpCode op_lookup(const char* name);

} // namespace pelmora
