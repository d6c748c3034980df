// The least that a measuring run can take: its terminals are known beforehand, and a plain loop
// executes them.
#pragma once

#include "model/expr.h"
#include "turtle/draw_context.h"

#include <cstdint>
#include <vector>

namespace pelmora_bench {

struct Terminals {
    std::vector<pelmora::OpCode> codes;
    std::int32_t steps; // as a run counts them: one more where the limit cuts it
    std::int32_t repeats, repetitions;
};

// Of a run from a reset context.
Terminals terminals_of(const pelmora::ExprNode* program, const pelmora::DrawContext& ctx);

// Executes them; what draw_measure() leaves in the context and returns.
RECT bare_run(const Terminals& terminals, pelmora::DrawContext* ctx);

// Ends the benchmark when the loop comes to something else than the program's run.
void check_bare_run(const Terminals& terminals, const pelmora::ExprNode* program,
                    const pelmora::DrawContext& ctx);

} // namespace pelmora_bench
