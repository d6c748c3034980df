#include "bench/bred.h"
#include "bench/figures.h"

#include <deque>

namespace pelmora_bench {
namespace {

using namespace pelmora;

constexpr int kOldAge = 500;

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

void breed_alone(benchmark::State& state, int seed) {
    Generations& old = bred(kOldAge, seed);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(old.breed());
    }
    state.counters["unit"] = 1;
}

void measure_alone(benchmark::State& state, int seed) {
    Generations& old = bred(kOldAge, seed);
    Population* pop = old.breed();
    for ([[maybe_unused]] auto _ : state) {
        measure(pop, old.context());
    }
    state.counters["unit"] = 1;
}

std::string lifer_of(std::int32_t size, int age) {
    static std::deque<Generations> all; // made before anything runs
    Generations* generations = &all.emplace_back(size, 0.5, age);
    std::string name =
        "a lifer of " + std::to_string(size) + " evolved, age " + std::to_string(age);
    // As many lifers as it takes for a quiet moment; a large population has them in one go.
    benchmark::RegisterBenchmark(name.c_str(), evolve, generations)->Repetitions(8 + 20'000 / size);
    return name;
}

} // namespace

void add_evolve_figures(std::vector<Figure>* figures) {
    figures->push_back(figure_of_seeds(
        "releasing and breeding at generation 500 / measuring it, 48 turtles", 1.0, kBredSeeds,
        {"generation 500 bred", breed_alone}, {"generation 500 measured", measure_alone}));
    for (const int age : {3, 7}) {
        figures->push_back(
            {"Evolve without pictures: a lifer of 32,766 / of 1,000, age " + std::to_string(age),
             {{lifer_of(32766, age), lifer_of(1000, age)}},
             1.3});
    }
}

} // namespace pelmora_bench
