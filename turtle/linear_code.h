// A program as straight code with loops, made for one run.
//
// As the pen state at the start is known and fixes every branch, the code has none. Nor is there
// anything in it for counting alone: what moves nothing is added up while the code is made, and a
// loop remains only where at least two of its passes have work. So the work of a run is bounded by
// the size of the tree and the number of steps, whatever the program.
#pragma once

#include "turtle/outline.h"
#include "turtle/packed.h"

#include <cstdint>

namespace pelmora {

enum class Op : std::uint8_t {
    // Terminals: each is a step.
    forward, // distance; number: the same
    turn,    // number: degrees to the right; turns
    color,   // increment
    pen,     // number: the new pen state
    idle,
    // The others are none.
    add,   // tally
    line,  // fault; number: for its line
    loop,  // counts itself and begins number passes; jump: where to go on after the last
    spin,  // a loop whose pass, up to its again, is but terminals that do not move the turtle
    again, // the end of a pass; jump: to the next
    go,    // jump
    end,   // of the program
    limit, // of the steps
};

constexpr bool op_is_step(Op op) {
    return op <= Op::idle;
}

struct Tally {
    std::uint32_t repeats, repetitions;
};

struct Jump {
    std::uint32_t target;  // index of a word
    std::uint32_t counter; // of loop and again: where the repeat's passes are counted
};

// The passes of one repeat while it runs. No repeat runs inside itself, so each has one of its own.
struct LoopCounter {
    std::uint32_t left;
    std::uint32_t done; // index of the word after the loop
};

struct CodeWord {
    Op op;
    Fault fault;
    std::int16_t number;
    // Steps of the leg, in its first word. A leg runs in one go: from the start of the code or from
    // after a loop, again or go to the next of these or the end.
    std::uint32_t leg;
    union {
        double distance;
        PackedTurns turns;
        PackedColor increment;
        Jump jump;
        Tally tally;         // of add, in code for steps
        std::uint32_t steps; // of add, in code for lines
    };
};
static_assert(sizeof(CodeWord) == 16);

struct LinearCode {
    WorkStack<CodeWord, 384> words;
    WorkStack<LoopCounter, 128> counters;
};

// What counts as work; everything else is added up.
enum class Work {
    steps,
    lines, // on the error log
};

// Fills the empty `code` for runs that start with `pen`, the pen state that the outline was made
// for.
void linear_code_assemble(const Outline& outline, PenState pen, Work work, LinearCode* code);

} // namespace pelmora
