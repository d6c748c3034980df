// The tree operators of the genetic algorithm: random growth, crossover, mutation. Every random
// choice is drawn in the order stated here, so that a seed always gives the same programs.
#pragma once

#include "model/expr.h"

#include <cstdint>

namespace pelmora {

// How many nodes random growth may still make, children promised but not yet grown included.
// Past the budget growth makes terminals, so that no parameter set can exhaust memory.
struct GrowthBudget {
    std::int64_t nodes;
};
inline constexpr std::int64_t kProgramNodeBudget = 131'072;
inline constexpr std::int64_t kPopulationNodeBudget = 30'000'000;

// A random program of at most `depth` levels, its root's slot null; null when depth is below 1.
// A BLOCK and a REPEAT_2 to REPEAT_10 have 2 to `maxChild` children (2 when that is less), the
// branches 2, REPEAT_50 and REPEAT_100 none. It takes at most kProgramNodeBudget nodes, and from
// `budget`, when given, the nodes that it made.
ExprNode* expr_random_tree(std::int32_t depth, std::int32_t maxChild, double pfnode, double pcolor,
                           GrowthBudget* budget = nullptr);

// Exchanges two random subtrees of two whole trees, held in the cells that their roots' slots name.
// With `mutant` (a tree with a null slot, taken over) one of the two is lost, the other moves into
// the other tree, and the mutant fills its hole. The caller reads its cells again: the roots may
// have changed. `known`, when given, is what there is in the two; it need not be counted then.
struct CrossoverCounts {
    ExprCounts t1, t2;
};
void expr_crossover(ExprNode* t1, ExprNode* t2, ExprNode* mutant, double pfnode,
                    const CrossoverCounts* known = nullptr);

// Replaces a random node of `tree`, held in the cell that its root's slot names, by a new random
// subtree. Returns 1, or 0 when none could be grown (depth below 1) and the tree is unchanged.
int expr_mutate(ExprNode* tree, std::int32_t depth, std::int32_t maxChild, double pfnode,
                double pcolor);

} // namespace pelmora
