// Iterative walks over a whole tree, for every operation that visits nodes. The path to the current
// node is on a heap stack, so only memory limits the depth. A stack that cannot grow is fatal
// ("fatal - out of memory" on the error log, exit status 2).
#pragma once

#include "model/node.h"
#include "model/work_stack.h"

#include <cstddef>

namespace pelmora {

// What a walk does after a visit.
enum class Walk {
    on,   // visit the node's children, then leave it
    out,  // skip the node's children and later siblings, then leave the parent
    stop, // end the walk
};

// The position of a walk. For the root, depth and index are 0 and the parent is null.
struct WalkPlace {
    std::size_t depth;
    const ExprNode* parent;
    std::ptrdiff_t index; // among the children of the parent
};

// Walks the tree in the cell `root`, in child order. Every node is entered before its children and
// left after them: Walk enter(Cell, WalkPlace), Walk leave(Cell, WalkPlace), where `out` from leave
// skips the later siblings. False when a visit returned stop.
//
// A Cell points to the pointer that holds the node. With `ExprNode**` enter may store another node
// there, whose children are then walked instead; a pointer to const is read-only. Leave may release
// the node. A cell that holds null is an empty tree.
template <class Cell, class Enter, class Leave>
bool expr_walk(Cell root, Enter enter, Leave leave) {
    struct Siblings { // those not yet entered
        Cell next;
        Cell end;
    };
    if (*root == nullptr) {
        return true;
    }
    WorkStack<Siblings> path; // the siblings of every node above `now`
    Siblings now{root, root + 1};
    const auto place = [&](Cell cell) {
        if (path.empty()) {
            return WalkPlace{0, nullptr, 0};
        }
        const ExprNode* parent = path.top().next[-1];
        return WalkPlace{path.size(), parent, cell - Cell{parent->children}};
    };
    const auto follow = [&](Walk result) {
        if (result == Walk::out) {
            now.next = now.end;
        }
        return result != Walk::stop;
    };
    for (;;) {
        while (now.next != now.end) {
            const Cell cell = now.next++;
            const Walk result = enter(cell, place(cell));
            if (result != Walk::on) {
                if (!follow(result)) {
                    return false;
                }
            } else if ((*cell)->count > 0) {
                path.push(now);
                now = {(*cell)->children, (*cell)->children + (*cell)->count};
            } else if (!follow(leave(cell, place(cell)))) {
                return false;
            }
        }
        if (path.empty()) {
            return true;
        }
        now = path.pop();
        const Cell left = now.next - 1;
        if (!follow(leave(left, place(left)))) {
            return false;
        }
    }
}

// Visits a node before its children, `visit(Node*)` returning true to continue. False as soon as a
// visit returned false.
template <class Node, class Visit>
bool expr_walk_preorder(Node* root, Visit visit) {
    using Cell = Node* const*;
    return expr_walk(
        Cell{&root},
        [&](Cell cell, const WalkPlace&) { return visit(*cell) ? Walk::on : Walk::stop; },
        [](Cell, const WalkPlace&) { return Walk::on; });
}

} // namespace pelmora
