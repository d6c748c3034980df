// One generation: its lifers, each with a turtle program, and their fitness.
#pragma once

#include "evolve/params.h"
#include "model/expr.h"

#include <cstdint>
#include <memory>

namespace pelmora {

// An individual. The root of its program has this record's `program` as its slot.
struct Lifer {
    ExprNode* program; // owned; null before it is made and after it was released
    double fitness;    // scaled, 0 to 1
    double score;      // raw: the value of the drawing, 0 once retired for breeding
};

struct Population {
    std::int32_t MAX_DEPTH;
    std::int32_t MAX_CHILD;
    std::int32_t size;
    Lifer* lifers; // owned, `size` of them
    double PCROSS, PMUTATE, PFNODE, PCOLOR;
    double FWDMULT, TURNMULT, LOOPMULT, CLRMULT, RPTMULT, REPMULT;
    double fitnessSum;         // the total of the roulette wheel
    double scoreMax, scoreMin; // of the last pop_statistics()
    double slope, offset;      // fitness = (score + offset) * slope; slope 0: all scores are equal
    double* wheel;             // owned: running sums of the fitness, for pop_select()
};

// A new population without programs, its parameters copied; null when the record cannot be
// allocated. Without memory for the lifers it is fatal: "fatal - out of memory allocating lifers"
// on the error log and exit status 2. Release with pop_free_programs() and pop_destroy().
Population* pop_create(const EvolveParams& params);

// Gives every lifer, in order, a new random program. They must have none before.
void pop_randomize(Population* pop);

// Releases every lifer's program.
void pop_free_programs(Population* pop);

// Releases the record and the lifers, not their programs. Null is allowed.
void pop_destroy(Population* pop);

// Owner of a population and its programs.
struct PopulationRelease {
    void operator()(Population* pop) const {
        pop_free_programs(pop);
        pop_destroy(pop);
    }
};
using PopulationOwner = std::unique_ptr<Population, PopulationRelease>;

// Stores `tree` as the lifer's program and links its root. The old program is not released.
void lifer_set_program(Lifer* lifer, ExprNode* tree);

// Finds the highest and lowest score and scales every score linearly onto a fitness of 0 to 1.
// When all scores are equal there is no scale: slope is 0 and every fitness 1, so that all have the
// same chance.
void pop_statistics(Population* pop);

// The scale that maps `min` to 0 and `max` to 1; slope 0 when they are equal, or so close that
// there is no finite one.
struct FitnessScale {
    double slope, offset;
};
FitnessScale pop_prescale(double max, double min);

// Applies the population's scale to every lifer and sums the result.
void pop_scale(Population* pop);

// Recomputes the sums after a caller changed a fitness.
void pop_sum_fitness(Population* pop);

} // namespace pelmora
