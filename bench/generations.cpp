#include "bench/generations.h"

#include "evolve/breed.h"
#include "evolve/generation.h"

namespace pelmora_bench {

using namespace pelmora;

EvolveParams first_params(std::int32_t size) {
    return {size, 9, 4, 0.8F, 0.2F, 0.75F, 0.1F, 0.5F, 0.3F, 0.2F, 0.1F, 0.1F, 0.05F};
}

DrawContext context_of(const Population& pop) {
    DrawContext ctx{};
    ctx.max_steps = kDefaultMaxSteps;
    ctx.multipliers = {pop.FWDMULT, pop.TURNMULT, pop.LOOPMULT,
                       pop.CLRMULT, pop.RPTMULT,  pop.REPMULT};
    return ctx;
}

void measure(Population* pop, DrawContext* ctx) {
    for (std::int32_t i = 0; i < pop->size; ++i) {
        draw_measure(ctx, pop->lifers[i].program);
        pop->lifers[i].score = draw_score(ctx);
    }
}

Generations::Generations(std::int32_t size, double seed, int age)
    : current_(pop_create(first_params(size))), next_(pop_create(first_params(size))),
      ctx_(context_of(*current_)) {
    rng_seed(seed);
    pop_randomize(current_.get());
    measure(current_.get(), &ctx_);
    pop_statistics(current_.get());
    for (int generation = 0; generation < age; ++generation) {
        pop_next_generation(&current_, &next_, [this](Population* pop) { measure(pop, &ctx_); });
    }
    random_ = rng_save();
}

Population* Generations::breed() {
    rng_restore(random_);
    pop_free_programs(next_.get());
    pop_breed(current_.get(), next_.get());
    return next_.get();
}

} // namespace pelmora_bench
