#include "evolve/grow.h"

#include "evolve/random.h"
#include "model/work_stack.h"

#include <algorithm>
#include <cassert>
#include <limits>

namespace pelmora {
namespace {

constexpr std::int32_t kFewestChildren = 2; // of a function that has children

// A child that growth has promised and not made yet.
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

std::int32_t random_child_count(OpCode op, std::int32_t max_child) {
    switch (op) {
    case IF_PEN_UP:
    case IF_PEN_DOWN:
        return 2;
    case REPEAT_50:
    case REPEAT_100:
        return 0;
    default:
        return rng_range(kFewestChildren, max_child);
    }
}

// The children are promised, not made.
ExprNode* random_function(std::int32_t max_child) {
    ExprNode* node = new_random_node(FUNCTION, kFirstFunctionOp, kLastFunctionOp);
    const std::int32_t count = random_child_count(node->op, max_child);
    if (count > 0) {
        node->count = static_cast<std::int16_t>(count);
        node->children = expr_new_children(count);
    }
    return node;
}

ExprNode* pick_function(ExprNode* tree, const ExprCounts& counts) {
    return expr_nth_function(tree, rng_range(0, counts.functions - 1));
}

ExprNode* pick_node(ExprNode* tree, const ExprCounts& counts) {
    return expr_nth_node(tree, rng_range(0, counts.nodes - 1));
}

ExprCounts counts_of(const ExprNode* tree) {
    return {expr_count_nodes(tree), expr_count_functions(tree)};
}

} // namespace

ExprNode* expr_random_tree(std::int32_t depth, std::int32_t max_child, double pfnode, double pcolor,
                           GrowthBudget* budget) {
    if (depth < 1) {
        return nullptr;
    }
    const std::int32_t widest = std::clamp<std::int32_t>(max_child, kFewestChildren,
                                                         std::numeric_limits<std::int16_t>::max());
    const std::int64_t limit =
        budget == nullptr ? kProgramNodeBudget : std::min(kProgramNodeBudget, budget->nodes);
    std::int64_t made = 0;
    ExprNode* root = nullptr;
    // Every promised child is in here, so that the budget bounds this stack as well.
    WorkStack<OpenCell> open;
    open.push({&root, depth});
    while (!open.empty()) {
        const OpenCell next = open.pop();
        ++made;
        const auto promised = static_cast<std::int64_t>(open.size());
        const bool may_branch = next.depth > 1 && made + promised + widest <= limit;
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

void expr_crossover(ExprNode* t1, ExprNode* t2, ExprNode* mutant, double pfnode) {
    expr_crossover_counted(t1, counts_of(t1), t2, counts_of(t2), mutant, pfnode);
}

void expr_crossover_counted(ExprNode* t1, const ExprCounts& counts1, ExprNode* t2,
                            const ExprCounts& counts2, ExprNode* mutant, double pfnode) {
    assert(t1->slot != nullptr && t2->slot != nullptr);
    const auto pick = rng_coin(pfnode) ? pick_function : pick_node;
    ExprNode* a = pick(t1, counts1);
    ExprNode* b = pick(t2, counts2);
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

int expr_mutate(ExprNode* tree, std::int32_t depth, std::int32_t max_child, double pfnode,
                double pcolor) {
    assert(tree->slot != nullptr);
    ExprNode* mutant = expr_random_tree(depth, max_child, pfnode, pcolor);
    if (mutant == nullptr) {
        return 0;
    }
    ExprNode* old = (rng_coin(pfnode) ? pick_function : pick_node)(tree, counts_of(tree));
    ExprNode** hole = old->slot;
    expr_free_tree(old);
    expr_place(hole, mutant);
    return 1;
}

} // namespace pelmora
