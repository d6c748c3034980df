// Populations of any age to measure with, always the same ones.
#pragma once

#include "evolve/population.h"
#include "evolve/random.h"
#include "turtle/draw.h"

#include <cstdint>

namespace pelmora_bench {

// The parameters that the dialog shows at its first use.
pelmora::EvolveParams first_params(std::int32_t size);

// What the runs of a population start from.
pelmora::DrawContext context_of(const pelmora::Population& pop);

// Scores every lifer by a measuring run.
void measure(pelmora::Population* pop, pelmora::DrawContext* ctx);

// A generation that was bred without retirement, and room for the one that is bred from it.
class Generations {
  public:
    Generations(std::int32_t size, double seed, int age);

    // The next generation, always the same one.
    pelmora::Population* breed();

    pelmora::DrawContext* context() { return &ctx_; }

  private:
    pelmora::PopulationOwner current_, next_;
    pelmora::DrawContext ctx_;
    pelmora::RandomState random_;
};

} // namespace pelmora_bench
