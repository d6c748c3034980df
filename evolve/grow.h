// The tree operators of the genetic algorithm: random growth, crossover, mutation. Every random
// choice is drawn in the order stated here, so that a seed always gives the same programs.
#pragma once

#include "model/expr.h"

#include <cstdint>

namespace pelmora {

// How many nodes random growth may still make, pending children included. Past the budget growth
// makes terminals, so that no parameter set can exhaust memory.
struct GrowthBudget {
    std::int64_t nodes;
};
inline constexpr std::int64_t kProgramNodeBudget = 131'072;
inline constexpr std::int64_t kPopulationNodeBudget = 30'000'000;

// A random program of at most `depth` levels, its root's slot null; null when depth is below 1. A
// BLOCK and a REPEAT_2 to REPEAT_10 have 2 to `maxChild` children (2 when that is less), the
// branches 2, REPEAT_50 and REPEAT_100 none. It has at most kProgramNodeBudget nodes, which are
// subtracted from `budget`, when given.
ExprNode* expr_random_tree(std::int32_t depth, std::int32_t maxChild, double pfnode, double pcolor,
                           GrowthBudget* budget = nullptr);

// Exchanges random subtrees of two trees, each in the cell that its root's slot points to. With
// `mutant` (owned, its slot null) one subtree is released, the other moves into its place, and the
// mutant replaces the other. The roots may change, so the caller reads its cells again. `known`,
// when given, holds the counts of both trees, which saves counting them.
struct CrossoverCounts {
    ExprCounts t1, t2;
};
void expr_crossover(ExprNode* t1, ExprNode* t2, ExprNode* mutant, double pfnode,
                    const CrossoverCounts* known = nullptr);

// Replaces a random node of `tree`, in the cell that its root's slot points to, by a new random
// subtree. Returns 1, or 0 when none could be grown (depth below 1) and the tree is unchanged.
int expr_mutate(ExprNode* tree, std::int32_t depth, std::int32_t maxChild, double pfnode,
                double pcolor);

} // namespace pelmora
