#include "evolve/generation.h"

#include "evolve/breed.h"

#include <algorithm>

namespace pelmora {
namespace {

bool is_live(std::uint16_t mark) {
    return (mark & LIVE_FLAG) != 0;
}

// Equal scores give every lifer the same fitness, so the retired ones are excluded here. When all
// are retired, all may breed.
void exclude_retired(Population* pop, const std::uint16_t* marks) {
    if (std::none_of(marks, marks + pop->size, is_live)) {
        return;
    }
    for (std::int32_t i = 0; i < pop->size; ++i) {
        if (!is_live(marks[i])) {
            pop->lifers[i].fitness = 0.0;
        }
    }
    pop_sum_fitness(pop);
}

} // namespace

void pop_zero_retired(Population* pop, const std::uint16_t* marks) {
    for (std::int32_t i = 0; i < pop->size; ++i) {
        if (!is_live(marks[i])) {
            pop->lifers[i].score = 0.0;
        }
    }
}

void pop_weigh_parents(Population* pop, const std::uint16_t* marks) {
    pop_zero_retired(pop, marks);
    pop_statistics(pop);
    if (pop->slope == 0.0) {
        exclude_retired(pop, marks);
    }
}

void pop_next_generation(PopulationOwner* current, PopulationOwner* previous,
                         const Scoring& score) {
    pop_free_programs(previous->get());
    pop_breed(current->get(), previous->get());
    current->swap(*previous);
    score(current->get());
    pop_statistics(current->get());
}

} // namespace pelmora
