#include "evolve/random.h"

#include <chrono>
#include <cmath>

namespace pelmora {
namespace {

constexpr std::size_t kEntries = kRandomEntries;
constexpr std::size_t kShortLag = 24;

// The last 55 numbers of the stream, and the index of the one returned last.
std::array<double, kEntries> rngTable;
std::size_t rngIndex;

std::uint32_t system_ticks() {
    using namespace std::chrono;
    const auto running = steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(duration_cast<milliseconds>(running).count());
}

TickSource tick_source = system_ticks;

// The difference modulo 1, of numbers between 0 and 1.
double subtract(double a, double b) {
    const double t = a - b;
    return t < 0.0 ? t + 1.0 : t;
}

// In place: the first loop reads old numbers, the second those that the first wrote.
void rng_refill() {
    for (std::size_t j = 0; j < kShortLag; ++j) {
        rngTable[j] = subtract(rngTable[j], rngTable[j + kEntries - kShortLag]);
    }
    for (std::size_t j = kShortLag; j < kEntries; ++j) {
        rngTable[j] = subtract(rngTable[j], rngTable[j - kShortLag]);
    }
}

} // namespace

void rng_set_tick_source(TickSource source) {
    tick_source = source != nullptr ? source : system_ticks;
}

double rng_clock_seed() {
    return (tick_source() & 0x7FFU) * 0.00048828125;
}

void rng_seed(double seed) {
    double next = 1e-9; // not 0, so that a seed of 0 gives a stream too
    double prev = seed;
    // A stride of 21 scatters neighbours over the table. The cycle stops before its last entry, 34,
    // which keeps its number from the earlier stream.
    for (std::size_t k = 0; k < kEntries - 1; ++k) {
        double& entry = rngTable[21 * k % kEntries];
        entry = next;
        next = subtract(prev, next);
        prev = entry;
    }
    for (int warm_up = 0; warm_up < 3; ++warm_up) {
        rng_refill();
    }
    rngIndex = 0;
}

RandomState rng_save() {
    return {rngTable, rngIndex};
}

void rng_restore(const RandomState& state) {
    rngTable = state.table;
    rngIndex = state.index;
}

double rng_draw() {
    if (++rngIndex >= kEntries) {
        rngIndex = 0;
        rng_refill();
    }
    return rngTable[rngIndex];
}

int rng_coin(double p) {
    return p >= 1.0 || rng_draw() <= p ? 1 : 0;
}

std::int32_t rng_range(std::int32_t low, std::int32_t high) {
    if (low >= high) {
        return low;
    }
    // In doubles throughout: the width of a range may not fit 32 bits, and a draw next to 1 rounds
    // up to high + 1.
    const double first = low;
    const double last = high;
    const double x = std::floor(rng_draw() * (last - first + 1.0) + first);
    return x > last ? high : static_cast<std::int32_t>(x);
}

} // namespace pelmora
