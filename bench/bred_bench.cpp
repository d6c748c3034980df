// Programs as evolution makes them, against the least that their runs and pictures can take.
#include "bench/bare_lines.h"
#include "bench/bare_run.h"
#include "bench/bred.h"
#include "bench/figures.h"
#include "services/gdi_owners.h"

#include <algorithm>
#include <deque>
#include <iterator>

namespace pelmora_bench {
namespace {

using namespace pelmora;

constexpr int kCell = 88; // pixels, each way

// A generation's programs, and what its bare runs need.
struct Known {
    explicit Known(Generations* generations);

    Generations& generations;
    const Population& pop;
    std::vector<Terminals> terminals;         // of each program
    std::vector<std::vector<BareLine>> lines; // those of its picture that can be seen
    double count = 0;                         // of all the terminals
};

Known::Known(Generations* bred) : generations(*bred), pop(*bred->breed()) {
    for (int i = 0; i < pop.size; ++i) {
        const ExprNode* program = pop.lifers[i].program;
        DrawContext context = context_of(pop);
        terminals.push_back(terminals_of(program, context));
        check_bare_run(terminals.back(), program, context);
        count += static_cast<double>(terminals.back().codes.size());
        draw_place(&context, draw_measure(&context, program), kCell, kCell, FitMode::stretch, 0);
        lines.push_back(seen(lines_of(program, &context)));
    }
}

void measured(benchmark::State& state, int age, int seed) {
    Known known(&bred(age, seed));
    Population* pop = known.generations.breed();
    for ([[maybe_unused]] auto _ : state) {
        measure(pop, known.generations.context());
    }
    state.counters["unit"] = known.count;
}

void measured_bare(benchmark::State& state, int age, int seed) {
    const Known known(&bred(age, seed));
    DrawContext context = context_of(known.pop);
    for ([[maybe_unused]] auto _ : state) {
        for (const Terminals& terminals : known.terminals) {
            benchmark::DoNotOptimize(bare_run(terminals, &context));
            benchmark::DoNotOptimize(context);
        }
    }
    state.counters["unit"] = known.count;
}

void drawn(benchmark::State& state, int age, int seed) {
    const Known known(&bred(age, seed));
    DrawContext context = context_of(known.pop);
    HDC screen = GetDC(nullptr);
    const Bitmap bitmap(CreateCompatibleBitmap(screen, kCell, kCell));
    const OwnedDevice device(CreateCompatibleDC(screen));
    ReleaseDC(nullptr, screen);
    SelectObject(device.get(), bitmap.get());
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < known.pop.size; ++i) {
            const DevicePen pen(device.get());
            draw_fit(device.get(), &context, known.pop.lifers[i].program, kCell, kCell,
                     FitMode::stretch, 0);
        }
    }
    state.counters["unit"] = known.count;
}

void drawn_bare(benchmark::State& state, int age, int seed) {
    const Known known(&bred(age, seed));
    DrawContext context = context_of(known.pop);
    std::vector<std::uint32_t> cell(std::size_t{kCell} * kCell);
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t i = 0; i < known.terminals.size(); ++i) {
            benchmark::DoNotOptimize(bare_run(known.terminals[i], &context));
            walk(known.lines[i], {cell.data(), kCell}, {0, 0, kCell, kCell});
        }
        benchmark::ClobberMemory();
    }
    state.counters["unit"] = known.count;
}

using AgedRun = void (*)(benchmark::State&, int age, int seed);

SeededRun at(int age, const char* name, AgedRun run) {
    return {std::string(name) + ", age " + std::to_string(age),
            [=](benchmark::State& state, int seed) { run(state, age, seed); }};
}

} // namespace

Generations& bred(int age, int seed) {
    static std::deque<Generations> all = [] {
        std::deque<Generations> generations;
        for (const int each : kBredAges) {
            for (int i = 0; i < kBredSeeds; ++i) {
                generations.emplace_back(kBredLifers, i / 8.0, each);
            }
        }
        return generations;
    }();
    const auto* place = std::find(std::begin(kBredAges), std::end(kBredAges), age);
    return all[static_cast<std::size_t>((place - kBredAges) * kBredSeeds + seed)];
}

void add_bred_figures(std::vector<Figure>* figures) {
    for (const int age : kBredAges) {
        figures->push_back(figure_of_seeds(
            "bred turtles measured / by a bare loop, age " + std::to_string(age), 0, kBredSeeds,
            at(age, "a terminal measured", measured), at(age, "a terminal, bare", measured_bare)));
    }
    for (const int age : kBredAges) {
        figures->push_back(figure_of_seeds(
            "their pictures / the bare loop and a walk of the lines, age " + std::to_string(age), 0,
            kBredSeeds, at(age, "a terminal drawn", drawn),
            at(age, "a terminal, drawn bare", drawn_bare)));
    }
}

} // namespace pelmora_bench
