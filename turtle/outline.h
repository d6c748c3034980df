// The course of a program, found in one walk over its tree before it runs.
//
// What runs, and how often, is fixed in the tree but for the branches, and those ask for nothing
// but the pen. So a visit to a subtree is known beforehand, for each of the two pen states that it
// may start in: what it adds up to, and the pen state that it ends in.
#pragma once

#include "model/expr.h"
#include "model/work_stack.h"

#include <array>
#include <cstdint>

namespace pelmora {

// What branches ask for: 1 when the pen is up, 0 when it is not.
using PenState = std::uint8_t;

// What a visit adds up to, apart from the turtle's own affairs. Sums stop at kMost.
struct Cost {
    std::uint32_t steps;
    std::uint32_t repeats;
    std::uint32_t repetitions;
    std::uint32_t lines; // on the error log
};
inline constexpr std::uint32_t kMost = INT32_MAX;

Cost operator+(const Cost& a, const Cost& b);
Cost operator*(std::uint32_t times, const Cost& cost);

struct Visit {
    Cost cost;
    PenState leaves; // the pen state in which the visit ends
};

// The visits to one subtree, by the pen state in which they start.
using Course = std::array<Visit, 2>;

enum class ItemKind : std::uint8_t {
    terminal, // any but the next
    pen,      // a terminal that sets the pen; number: the state
    fault,    // number: for its line
    block,    // also stands for nodes that do nothing
    branch,   // two subtrees follow; number: the pen state that chooses the first
    repeat,   // number: passes
};

// The faults of a node, each with its line on the error log.
enum class Fault : std::uint8_t { few_children, no_children, null_child };

// A node of the tree in pre-order.
struct Item {
    ItemKind kind;
    std::uint8_t code; // the OpCode of a terminal, the Fault of a fault
    std::int16_t number;
    std::uint32_t function; // of block, branch and repeat: their place in Outline::functions
};

struct FunctionOutline {
    std::uint32_t end; // the item after the subtree's last
    Course pass;       // of its children: for a repeat one pass, else all that there is
};

struct Outline {
    // The first is a block around the whole program.
    WorkStack<Item, 512> items;
    WorkStack<FunctionOutline, 128> functions;
};

// How a repeat's passes are spread over the pen states in which they start.
struct Passes {
    std::array<std::uint32_t, 2> from;
    PenState leaves; // after the last pass
};
Passes outline_passes(std::int16_t count, const Course& pass, PenState pen);

// A whole visit to a block, branch or repeat.
Visit outline_visit(const Item& item, const FunctionOutline& function, PenState pen);

// Fills the empty `outline` from the tree, which may be null, for a run that starts with `pen`.
// What such a run reaches only after more than `budget` steps may be left out.
void outline_survey(const ExprNode* root, PenState pen, std::int64_t budget, Outline* outline);

} // namespace pelmora
