// Breeds generation after generation and looks at the memory. Arguments: how many generations, how
// many turtles, the seed, and what the user does between the generations: "look", "retire" (about
// half of the turtles, at random) or "mutate" (five of them). Status 1 when more memory is resident
// than 1.25 times what is alive and 50 MB, 2 when the arguments are wrong.
#include "bench/generations.h"
#include "bench/resident.h"
#include "evolve/generation.h"
#include "evolve/grow.h"
#include "evolve/random.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <sstream>
#include <string>

namespace {

using namespace pelmora;
using namespace pelmora_bench;

void retire(Population* pop) {
    for (std::int32_t i = 0; i < pop->size; ++i) {
        if (rng_coin(0.5) != 0) {
            pop->lifers[i].score = 0;
        }
    }
}

void mutate(Population* pop) {
    for (int i = 0; i < 5; ++i) {
        ExprNode* program = pop->lifers[rng_range(0, pop->size - 1)].program;
        expr_mutate(program, pop->MAX_DEPTH, pop->MAX_CHILD, pop->PFNODE, pop->PCOLOR);
    }
}

// One line of the curve. False when the bound does not hold.
bool report(int generation, const Population& pop, double milliseconds) {
    const double live = live_bytes(2.0 * pop.size);
    const double resident = resident_bytes();
    const double bound = 1.25 * live + 50e6;
    std::printf("%10d %12zu %10.1f %12.1f %10.1f %8.2f%s\n", generation, expr_live().nodes,
                live / 1e6, resident / 1e6, bound / 1e6, milliseconds,
                resident > bound ? "  TOO MUCH" : "");
    std::fflush(stdout);
    return resident <= bound;
}

bool soak(int generations, std::int32_t size, double seed, const std::string& user) {
    using Clock = std::chrono::steady_clock;
    PopulationOwner current(pop_create(first_params(size)));
    PopulationOwner next(pop_create(first_params(size)));
    DrawContext ctx = context_of(*current);
    rng_seed(seed);
    pop_randomize(current.get());
    measure(current.get(), &ctx);
    const int interval = std::max(generations / 25, 1);
    bool holds = true;
    std::printf("%10s %12s %10s %12s %10s %8s\n", "generation", "nodes", "live MB", "resident MB",
                "bound MB", "ms each");
    Clock::time_point last = Clock::now();
    for (int generation = 1; generation <= generations; ++generation) {
        if (user == "retire") {
            retire(current.get());
        } else if (user == "mutate") {
            mutate(current.get());
        }
        pop_statistics(current.get());
        pop_next_generation(&current, &next, [&ctx](Population* pop) { measure(pop, &ctx); });
        if (generation % interval == 0) {
            const std::chrono::duration<double, std::milli> time = Clock::now() - last;
            holds = report(generation, *current, time.count() / interval) && holds;
            last = Clock::now();
        }
    }
    return holds;
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
    int generations = 0;
    int size = 0;
    double seed = 0;
    std::string user;
    std::istringstream(arguments) >> generations >> size >> seed >> user;
    if (generations <= 0 || size <= 0 || (user != "look" && user != "retire" && user != "mutate")) {
        std::fputs("Usage: pelmora_soak GENERATIONS TURTLES SEED look|retire|mutate\n", stderr);
        return 2;
    }
    return soak(generations, params_population_size(size), seed, user) ? 0 : 1;
}
