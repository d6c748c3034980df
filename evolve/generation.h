// One generation after another: who may breed, and the step to the next.
#pragma once

#include "evolve/population.h"

#include <cstdint>
#include <functional>

namespace pelmora {

// The mark of a lifer that may breed; without it the lifer is retired. Marks come as an array with
// one for each lifer.
inline constexpr std::uint16_t LIVE_FLAG = 0x100;

// Sets the score of every retired lifer to 0.
void pop_zero_retired(Population* pop, const std::uint16_t* marks);

// Turns marks and scores into the fitness by which parents are chosen. Retired lifers have no
// children, unless all are retired.
void pop_weigh_parents(Population* pop, const std::uint16_t* marks);

// Gives every lifer of a population its score.
using Scoring = std::function<void(Population* pop)>;

// Breeds `current`, whose fitness is known, into `previous`, whose programs are released; then the
// two change roles, and the new generation gets its scores and its fitness.
void pop_next_generation(PopulationOwner* current, PopulationOwner* previous, const Scoring& score);

} // namespace pelmora
