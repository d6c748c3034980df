#include "bench/figures.h"
#include "bench/hand_written.h"
#include "model/parse.h"

#include <cstring>

namespace pelmora_bench {
namespace {

using namespace pelmora;

DrawContext reset_context() {
    DrawContext ctx;
    std::memset(&ctx, 0, sizeof ctx);
    ctx.max_steps = kDefaultMaxSteps;
    draw_reset(&ctx);
    return ctx;
}

void check_same_work(const HandWritten& loop, const ExprNode* tree) {
    DrawContext by_hand = reset_context();
    DrawContext by_program = reset_context();
    RECT bounds_by_hand;
    RECT bounds_by_program;
    loop.measure(&by_hand, &bounds_by_hand);
    draw_run(nullptr, &by_program, tree, &bounds_by_program);
    check_same_run(loop.name, by_hand, bounds_by_hand, by_program, bounds_by_program);
}

template <class Measure>
void measure(benchmark::State& state, Measure run) {
    DrawContext ctx = reset_context();
    RECT bounds;
    for ([[maybe_unused]] auto _ : state) {
        draw_reset(&ctx);
        run(&ctx, &bounds);
        benchmark::DoNotOptimize(bounds);
        benchmark::DoNotOptimize(ctx);
    }
    state.counters["unit"] = kDefaultMaxSteps;
}

void by_hand(benchmark::State& state, const HandWritten* loop) {
    measure(state, loop->measure);
}

void by_program(benchmark::State& state, const HandWritten* loop) {
    const ExprTree tree(parse_expr(loop->program));
    check_same_work(*loop, tree.get());
    measure(state,
            [&](DrawContext* ctx, RECT* bounds) { draw_run(nullptr, ctx, tree.get(), bounds); });
}

} // namespace

void add_turtle_figures(std::vector<Figure>* figures) {
    Figure mean{"step of a measuring run / of a hand-written loop: geometric mean", {}, 4.0};
    for (const HandWritten& loop : hand_written()) {
        const std::string name = loop.name;
        const Ratio ratio{"a step, measured: " + name, "a step, by hand: " + name};
        benchmark::RegisterBenchmark(ratio.top.c_str(), by_program, &loop);
        benchmark::RegisterBenchmark(ratio.bottom.c_str(), by_hand, &loop);
        mean.ratios.push_back(ratio);
    }
    figures->push_back(mean);
}

} // namespace pelmora_bench
