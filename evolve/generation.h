// Which lifers may breed, and the step to the next generation.
#pragma once

#include "evolve/population.h"

#include <cstdint>
#include <functional>

namespace pelmora {

// The mark of a lifer that may breed; without it the lifer is retired. `marks` has one element per
// lifer.
inline constexpr std::uint16_t LIVE_FLAG = 0x100;

// Sets the score of every retired lifer to 0.
void pop_zero_retired(Population* pop, const std::uint16_t* marks);

// Turns marks and scores into the fitness by which parents are chosen. Retired lifers have no
// children, unless all are retired.
void pop_weigh_parents(Population* pop, const std::uint16_t* marks);

// Scores every lifer of a population.
using Scoring = std::function<void(Population* pop)>;

// Releases the programs of `previous` and breeds `current`, whose fitness must be set, into it.
// Then swaps the two, and sets the scores and the fitness of the new generation.
void pop_next_generation(PopulationOwner* current, PopulationOwner* previous, const Scoring& score);

} // namespace pelmora
