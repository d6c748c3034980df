#include "bench/figures.h"
#include "bench/generations.h"

#include <benchmark/benchmark.h>

#include <deque>
#include <utility>

namespace pelmora_bench {
namespace {

using namespace pelmora;

constexpr int kSeeds = 4;
constexpr int kLifers = 48;
constexpr int kOldAge = 500;

// All that are measured. They are made before anything runs, in order: a seed leaves something of
// the stream before it.
std::deque<Generations> all;

void evolve(benchmark::State& state, Generations* generations) {
    std::int32_t size = 0;
    for ([[maybe_unused]] auto _ : state) {
        Population* pop = generations->breed();
        measure(pop, generations->context());
        pop_statistics(pop);
        size = pop->size;
    }
    state.counters["unit"] = size;
}

void breed_alone(benchmark::State& state, Generations* generations) {
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(generations->breed());
    }
    state.counters["unit"] = 1;
}

void measure_alone(benchmark::State& state, Generations* generations) {
    Population* pop = generations->breed();
    for ([[maybe_unused]] auto _ : state) {
        measure(pop, generations->context());
    }
    state.counters["unit"] = 1;
}

Ratio old_breeding(int seed) {
    Generations* old = &all.emplace_back(kLifers, seed / 8.0, kOldAge);
    const std::string number = std::to_string(seed);
    Ratio ratio{"generation 500 bred, seed " + number, "generation 500 measured, seed " + number};
    benchmark::RegisterBenchmark(ratio.top.c_str(), breed_alone, old);
    benchmark::RegisterBenchmark(ratio.bottom.c_str(), measure_alone, old);
    return ratio;
}

std::string lifer_of(std::int32_t size) {
    Generations* generations = &all.emplace_back(size, 0.5, 3);
    std::string name = "a lifer of " + std::to_string(size) + ": Evolve without pictures";
    // As many lifers as it takes for a quiet moment; a large population has them in one go.
    benchmark::RegisterBenchmark(name.c_str(), evolve, generations)->Repetitions(4 + 20'000 / size);
    return name;
}

} // namespace

void add_evolve_figures(std::vector<Figure>* figures) {
    Figure old{"releasing and breeding at generation 500 / measuring it, 48 turtles", {}, 1.0};
    for (int seed = 0; seed < kSeeds; ++seed) {
        old.ratios.push_back(old_breeding(seed));
    }
    figures->push_back(std::move(old));
    const std::string small = lifer_of(1000);
    const std::string large = lifer_of(32766);
    figures->push_back(
        {"Evolve without pictures: a lifer of 32,766 / a lifer of 1,000", {{large, small}}, 1.3});
}

} // namespace pelmora_bench
