#include "evolve/breed.h"

#include "evolve/random.h"

#include <algorithm>

namespace pelmora {

std::int32_t pop_select(const Population* pop) {
    const double pick = rng_draw() * pop->fitnessSum;
    // The first lifer whose running sum reaches the pick. The last one is left out of the search:
    // it takes whatever the earlier ones leave, a shortfall from rounding included.
    const double* first = pop->wheel;
    const double* last = first + (pop->size - 1);
    return static_cast<std::int32_t>(std::lower_bound(first, last, pick) - first);
}

void pop_cross(const Population* pop, const Lifer* parent_a, const Lifer* parent_b, Lifer* child_a,
               Lifer* child_b, GrowthBudget* budget) {
    // The children's own cells are the working cells, crosswise: a line stays in the cell that it
    // was copied to, and parent A's line is the second child.
    CrossoverCounts counts;
    lifer_set_program(child_b, expr_copy_tree(parent_a->program, &counts.t1));
    lifer_set_program(child_a, expr_copy_tree(parent_b->program, &counts.t2));
    if (!rng_coin(pop->PCROSS)) {
        return;
    }
    ExprNode* mutant = nullptr;
    if (rng_coin(pop->PMUTATE)) {
        mutant =
            expr_random_tree(pop->MAX_DEPTH >> 1, pop->MAX_CHILD, pop->PFNODE, pop->PCOLOR, budget);
    }
    expr_crossover(child_b->program, child_a->program, mutant, pop->PFNODE, &counts);
}

void pop_breed(const Population* cur, Population* next) {
    GrowthBudget budget{kPopulationNodeBudget};
    for (std::int32_t j = 0; j + 1 < cur->size; j += 2) {
        const Lifer* parent_a = &cur->lifers[pop_select(cur)];
        const Lifer* parent_b = &cur->lifers[pop_select(cur)];
        pop_cross(cur, parent_a, parent_b, &next->lifers[j], &next->lifers[j + 1], &budget);
    }
}

} // namespace pelmora
