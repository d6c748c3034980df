#include "evolve/grow.h"

#include "evolve/random.h"
#include "model/work_stack.h"

#include <algorithm>
#include <cassert>
#include <limits>

namespace pelmora {
namespace {

constexpr std::int32_t kMinChildren = 2; // of a function that has children

// A pending child: counted in its parent, not grown yet.
struct OpenCell {
    ExprNode** cell;
    std::int32_t depth; // levels that its subtree may take
};

ExprNode* new_random_node(NodeKind kind, OpCode first, OpCode last) {
    ExprNode* node = expr_new_node(kind);
    node->op = static_cast<OpCode>(rng_range(first, last));
    return node;
}

ExprNode* random_terminal(double pcolor) {
    return rng_coin(pcolor) ? new_random_node(TERMINAL, kFirstColorOp, kLastColorOp)
                            : new_random_node(TERMINAL, kFirstMoveOp, kLastMoveOp);
}

std::int32_t random_child_count(OpCode op, std::int32_t maxChild) {
    switch (op) {
    case IF_PEN_UP:
    case IF_PEN_DOWN:
        return 2;
    case REPEAT_50:
    case REPEAT_100:
        return 0;
    default:
        return rng_range(kMinChildren, maxChild);
    }
}

// Its children are pending.
ExprNode* random_function(std::int32_t maxChild) {
    ExprNode* node = new_random_node(FUNCTION, kFirstFunctionOp, kLastFunctionOp);
    const std::int32_t count = random_child_count(node->op, maxChild);
    if (count > 0) {
        node->count = static_cast<std::int16_t>(count);
        node->children = expr_new_children(count);
    }
    return node;
}

// A random node, or one of the functions. `known`, when given, holds the tree's counts.
ExprNode* pick(ExprNode* tree, bool function, const ExprCounts* known) {
    if (function) {
        const int functions = known != nullptr ? known->functions : expr_count_functions(tree);
        return expr_nth_function(tree, rng_range(0, functions - 1));
    }
    const int nodes = known != nullptr ? known->nodes : expr_count_nodes(tree);
    return expr_nth_node(tree, rng_range(0, nodes - 1));
}

} // namespace

ExprNode* expr_random_tree(std::int32_t depth, std::int32_t maxChild, double pfnode, double pcolor,
                           GrowthBudget* budget) {
    if (depth < 1) {
        return nullptr;
    }
    const std::int32_t widest =
        std::clamp<std::int32_t>(maxChild, kMinChildren, std::numeric_limits<std::int16_t>::max());
    const std::int64_t limit =
        budget == nullptr ? kProgramNodeBudget : std::min(kProgramNodeBudget, budget->nodes);
    std::int64_t made = 0;
    ExprNode* root = nullptr;
    // Holds every pending child, so the budget bounds this stack, too.
    WorkStack<OpenCell> open;
    open.push({&root, depth});
    while (!open.empty()) {
        const OpenCell next = open.pop();
        ++made;
        const auto pending = static_cast<std::int64_t>(open.size());
        const bool may_branch = next.depth > 1 && made + pending + widest <= limit;
        ExprNode* node =
            may_branch && rng_coin(pfnode) ? random_function(widest) : random_terminal(pcolor);
        expr_place(next.cell, node);
        for (std::int32_t i = node->count; i-- > 0;) { // the first child on top
            open.push({&node->children[i], next.depth - 1});
        }
    }
    root->slot = nullptr;
    if (budget != nullptr) {
        budget->nodes -= made;
    }
    return root;
}

void expr_crossover(ExprNode* t1, ExprNode* t2, ExprNode* mutant, double pfnode,
                    const CrossoverCounts* known) {
    assert(t1->slot != nullptr && t2->slot != nullptr);
    const bool functions = rng_coin(pfnode) != 0;
    ExprNode* a = pick(t1, functions, known != nullptr ? &known->t1 : nullptr);
    ExprNode* b = pick(t2, functions, known != nullptr ? &known->t2 : nullptr);
    ExprNode** hole1 = a->slot;
    ExprNode** hole2 = b->slot;
    if (mutant == nullptr) {
        expr_place(hole1, b);
        expr_place(hole2, a);
    } else if (rng_coin(0.5)) {
        expr_free_tree(b);
        expr_place(hole2, a);
        expr_place(hole1, mutant);
    } else {
        expr_free_tree(a);
        expr_place(hole1, b);
        expr_place(hole2, mutant);
    }
}

int expr_mutate(ExprNode* tree, std::int32_t depth, std::int32_t maxChild, double pfnode,
                double pcolor) {
    assert(tree->slot != nullptr);
    ExprNode* mutant = expr_random_tree(depth, maxChild, pfnode, pcolor);
    if (mutant == nullptr) {
        return 0;
    }
    ExprNode* old = pick(tree, rng_coin(pfnode) != 0, nullptr);
    ExprNode** hole = old->slot;
    expr_free_tree(old);
    expr_place(hole, mutant);
    return 1;
}

} // namespace pelmora
