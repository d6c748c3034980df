#include "bench/bare_run.h"

#include "bench/bare_turtle.h"
#include "bench/figures.h"
#include "turtle/draw.h"
#include "turtle/history.h"

#include <array>
#include <span>

namespace pelmora_bench {
namespace {

using namespace pelmora;

struct Meaning {
    OpFamily family = OpFamily::block; // of codes that no terminal has
    std::int16_t parameter = 0;
};

constexpr auto kMeanings = [] {
    std::array<Meaning, 256> meanings{};
    for (const Instruction& instruction : kInstructions) {
        meanings[instruction.code] = {instruction.family, instruction.parameter};
    }
    return meanings;
}();

} // namespace

Terminals terminals_of(const ExprNode* program, const DrawContext& ctx) {
    Terminals terminals{};
    History history(program, ctx.pen_up == 1 ? 1 : 0, ctx.max_steps);
    for (auto next = history.next(); !next.empty(); next = history.next()) {
        terminals.codes.insert(terminals.codes.end(), next.begin(), next.end());
    }
    terminals.steps =
        static_cast<std::int32_t>(terminals.codes.size()) + (history.is_cut() ? 1 : 0);
    terminals.repeats = static_cast<std::int32_t>(history.repeats());
    terminals.repetitions = static_cast<std::int32_t>(history.repetitions());
    return terminals;
}

RECT bare_run(const Terminals& terminals, DrawContext* ctx) {
    draw_reset(ctx);
    BareTurtle turtle(*ctx);
    for (const OpCode code : terminals.codes) {
        const auto [family, parameter] = kMeanings[code];
        if (family == OpFamily::forward) {
            turtle.forward(parameter);
        } else if (family == OpFamily::turn) {
            turtle.turn(parameter);
        } else if (family != OpFamily::pen) {
            turtle.color(static_cast<int>(family) - static_cast<int>(OpFamily::red), parameter);
        } else {
            turtle.pen(parameter);
        }
    }
    RECT bounds;
    turtle.store(terminals.steps, terminals.repeats, terminals.repetitions, ctx, &bounds);
    return bounds;
}

void check_bare_run(const Terminals& terminals, const ExprNode* program, const DrawContext& ctx) {
    DrawContext bare = ctx;
    DrawContext run = ctx;
    const RECT bare_bounds = bare_run(terminals, &bare);
    const RECT bounds = draw_measure(&run, program);
    check_same_run("of known terminals", bare, bare_bounds, run, bounds);
}

} // namespace pelmora_bench
