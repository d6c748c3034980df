#include "bench/figures.h"
#include "bench/generations.h"

#include <benchmark/benchmark.h>

#include <map>
#include <utility>

namespace pelmora_bench {
namespace {

using namespace pelmora;

constexpr int kSeeds = 4;

// Those of this size and age, made when first asked for.
Generations& generations(std::int32_t size, int age, int seed) {
    static std::map<std::pair<std::int32_t, int>, Generations> all;
    return all.try_emplace({size, seed}, size, seed / 8.0, age).first->second;
}

void evolve(benchmark::State& state, std::int32_t size) {
    Generations& all = generations(size, 3, 4);
    for ([[maybe_unused]] auto _ : state) {
        Population* pop = all.breed();
        measure(pop, all.context());
        pop_statistics(pop);
    }
    state.counters["unit"] = size;
}

constexpr int kOldAge = 500;

void breed_old(benchmark::State& state, int seed) {
    Generations& old = generations(48, kOldAge, seed);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(old.breed());
    }
    state.counters["unit"] = 1;
}

void measure_old(benchmark::State& state, int seed) {
    Generations& old = generations(48, kOldAge, seed);
    Population* pop = old.breed();
    for ([[maybe_unused]] auto _ : state) {
        measure(pop, old.context());
    }
    state.counters["unit"] = 1;
}

} // namespace

void add_evolve_figures(std::vector<Figure>* figures) {
    Figure old{"releasing and breeding at generation 500 / measuring it, 48 turtles", {}, 1.0};
    for (int seed = 0; seed < kSeeds; ++seed) {
        const std::string number = std::to_string(seed);
        const Ratio ratio{"generation 500 bred, seed " + number,
                          "generation 500 measured, seed " + number};
        benchmark::RegisterBenchmark(ratio.top.c_str(), breed_old, seed);
        benchmark::RegisterBenchmark(ratio.bottom.c_str(), measure_old, seed);
        old.ratios.push_back(ratio);
    }
    figures->push_back(std::move(old));

    const auto lifer_of = [](std::int32_t size) {
        std::string name = "a lifer of " + std::to_string(size) + ": Evolve without pictures";
        // As many lifers as it takes for a quiet moment; large populations have them in one go.
        benchmark::RegisterBenchmark(name.c_str(), evolve, size)->Repetitions(2 + 20'000 / size);
        return name;
    };
    const std::string small = lifer_of(1000);
    const std::string large = lifer_of(32766);
    figures->push_back(
        {"Evolve without pictures: a lifer of 32,766 / a lifer of 1,000", {{large, small}}, 1.3});
}

} // namespace pelmora_bench
