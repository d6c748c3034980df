#include "evolve/breed.h"

#include "evolve/random.h"

#include <algorithm>

namespace pelmora {

std::int32_t pop_select(const Population* pop) {
    const double pick = rng_draw() * pop->fitnessSum;
    // The first lifer whose running sum reaches the pick. The last one is not searched: it is
    // chosen when no earlier one reaches the pick, also because of rounding.
    const double* first = pop->wheel;
    const double* last = first + (pop->size - 1);
    return static_cast<std::int32_t>(std::lower_bound(first, last, pick) - first);
}

void pop_cross(const Population* pop, const Lifer* parentA, const Lifer* parentB, Lifer* childA,
               Lifer* childB, GrowthBudget* budget) {
    // The copies are crossed in the children's cells. Parent A's copy is the second child, parent
    // B's the first.
    CrossoverCounts counts;
    lifer_set_program(childB, expr_copy_tree(parentA->program, &counts.t1));
    lifer_set_program(childA, expr_copy_tree(parentB->program, &counts.t2));
    if (!rng_coin(pop->PCROSS)) {
        return;
    }
    ExprNode* mutant = nullptr;
    if (rng_coin(pop->PMUTATE)) {
        mutant =
            expr_random_tree(pop->MAX_DEPTH >> 1, pop->MAX_CHILD, pop->PFNODE, pop->PCOLOR, budget);
    }
    expr_crossover(childB->program, childA->program, mutant, pop->PFNODE, &counts);
}

void pop_breed(const Population* cur, Population* next) {
    GrowthBudget budget{kPopulationNodeBudget};
    for (std::int32_t j = 0; j + 1 < cur->size; j += 2) {
        const Lifer* parentA = &cur->lifers[pop_select(cur)];
        const Lifer* parentB = &cur->lifers[pop_select(cur)];
        pop_cross(cur, parentA, parentB, &next->lifers[j], &next->lifers[j + 1], &budget);
    }
}

} // namespace pelmora
