// The nodes that programs are made of.
#pragma once

#include "model/instruction.h"

#include <cstddef>
#include <cstdint>

namespace pelmora {

// One node of a program. A terminal has no children; every child's `slot` points at the element of
// its parent's `children` that points back to it; no element is null. A tree has one owner.
struct ExprNode {
    NodeKind kind;
    OpCode op;
    std::int16_t count;  // number of children
    ExprNode** children; // null while the node has no array
    ExprNode** slot;     // the cell that holds this node; null for a root without a cell
};

// Nodes and children arrays that are allocated.
struct ExprLive {
    std::size_t nodes;
    std::size_t arrays;
};

} // namespace pelmora
