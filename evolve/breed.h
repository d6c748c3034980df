// Selection, crossover of two parents, and breeding of a generation.
#pragma once

#include "evolve/grow.h"
#include "evolve/population.h"

namespace pelmora {

// The index of a lifer, chosen with a probability proportional to its fitness. Takes one number
// from the stream. Needs the fitness sums of pop_statistics() or pop_sum_fitness().
std::int32_t pop_select(const Population* pop);

// Makes two children, whose programs must be null, from two parents of `pop`: copies, or with
// probability PCROSS the results of a crossover, with probability PMUTATE one with a mutant. The
// first child is parent B's copy, the second parent A's. Mutants are grown from `budget`.
void pop_cross(const Population* pop, const Lifer* parentA, const Lifer* parentB, Lifer* childA,
               Lifer* childB, GrowthBudget* budget);

// Makes a child of `cur` for every lifer of `next`, which must have no programs. The statistics of
// `cur` must be current. Both have the same size.
void pop_breed(const Population* cur, Population* next);

} // namespace pelmora
