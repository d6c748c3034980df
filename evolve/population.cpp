#include "evolve/population.h"

#include "evolve/grow.h"
#include "model/fatal.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <new>

namespace pelmora {
namespace {

// An array of zeroed records. Memory exhaustion is fatal.
template <class T>
T* new_lifer_array(std::int32_t size) {
    T* array = new (std::nothrow) T[static_cast<std::size_t>(size)]();
    if (array == nullptr) {
        std::fputs("fatal - out of memory allocating lifers\n", stderr);
        fatal_exit();
    }
    return array;
}

} // namespace

Population* pop_create(const EvolveParams& params) {
    Population* pop = new (std::nothrow) Population{};
    if (pop == nullptr) {
        return nullptr;
    }
    pop->MAX_DEPTH = params.MAX_DEPTH;
    pop->MAX_CHILD = params.MAX_CHILD;
    pop->size = params.size;
    pop->PCROSS = params.PCROSS;
    pop->PMUTATE = params.PMUTATE;
    pop->PFNODE = params.PFNODE;
    pop->PCOLOR = params.PCOLOR;
    pop->FWDMULT = params.FWDMULT;
    pop->TURNMULT = params.TURNMULT;
    pop->LOOPMULT = params.LOOPMULT;
    pop->CLRMULT = params.CLRMULT;
    pop->RPTMULT = params.RPTMULT;
    pop->REPMULT = params.REPMULT;
    pop->lifers = new_lifer_array<Lifer>(pop->size);
    pop->wheel = new_lifer_array<double>(pop->size);
    return pop;
}

void pop_randomize(Population* pop) {
    // A root is reserved for every lifer, so that large early programs leave nodes for the later
    // ones.
    GrowthBudget budget{kPopulationNodeBudget - pop->size};
    for (std::int32_t i = 0; i < pop->size; ++i) {
        ++budget.nodes; // this lifer's root
        lifer_set_program(&pop->lifers[i], expr_random_tree(pop->MAX_DEPTH, pop->MAX_CHILD,
                                                            pop->PFNODE, pop->PCOLOR, &budget));
    }
}

void pop_free_programs(Population* pop) {
    for (std::int32_t i = 0; i < pop->size; ++i) {
        expr_free_tree(pop->lifers[i].program);
        pop->lifers[i].program = nullptr;
    }
}

void pop_destroy(Population* pop) {
    if (pop == nullptr) {
        return;
    }
    delete[] pop->wheel;
    delete[] pop->lifers;
    delete pop;
}

void lifer_set_program(Lifer* lifer, ExprNode* tree) {
    expr_place(&lifer->program, tree);
}

void pop_statistics(Population* pop) {
    const auto [lowest, highest] =
        std::minmax_element(pop->lifers, pop->lifers + pop->size,
                            [](const Lifer& a, const Lifer& b) { return a.score < b.score; });
    pop->scoreMax = highest->score;
    pop->scoreMin = lowest->score;
    const FitnessScale scale = pop_prescale(pop->scoreMax, pop->scoreMin);
    pop->slope = scale.slope;
    pop->offset = scale.offset;
    pop_scale(pop);
}

FitnessScale pop_prescale(double max, double min) {
    // Scores that are equal, or so close that the quotient overflows, have no finite scale.
    const double slope = 1.0 / (max - min);
    return {std::isfinite(slope) ? slope : 0.0, -min};
}

void pop_scale(Population* pop) {
    for (std::int32_t i = 0; i < pop->size; ++i) {
        Lifer& lifer = pop->lifers[i];
        lifer.fitness = pop->slope == 0.0 ? 1.0 : (lifer.score + pop->offset) * pop->slope;
    }
    pop_sum_fitness(pop);
}

void pop_sum_fitness(Population* pop) {
    pop->fitnessSum = 0.0;
    for (std::int32_t i = 0; i < pop->size; ++i) {
        pop->fitnessSum += pop->lifers[i].fitness;
        pop->wheel[i] = pop->fitnessSum;
    }
}

} // namespace pelmora
