// The one stream of random numbers: a subtractive lagged-Fibonacci generator over real numbers,
// x[n] = (x[n-55] - x[n-24]) mod 1, refilled 55 at a time (Knuth, The Art of Computer Programming,
// volume 2, 3.2.2). Process-wide: all populations share it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace pelmora {

// The clock of rng_clock_seed(): a running count of milliseconds.
using TickSource = std::uint32_t (*)();

// Replaces the tick source, for reproducible runs; null restores the system's clock.
void rng_set_tick_source(TickSource source);

// A seed in [0, 1) from the low 11 bits of the tick source.
double rng_clock_seed();

// Restarts the stream from `seed` in [0, 1). Table entry 34 is not written: it keeps its number
// from the earlier stream (0 at program start), on which the new one depends.
void rng_seed(double seed);

// Saves and restores the state of the stream, so that a generation can be bred again. A seed alone
// does not give the same numbers.
inline constexpr std::size_t kRandomEntries = 55;
struct RandomState {
    std::array<double, kRandomEntries> table;
    std::size_t index;
};
RandomState rng_save();
void rng_restore(const RandomState& state);

// The next number in [0, 1).
double rng_draw();

// 1 with probability `p`, else 0. Takes no number from the stream when p is 1 or more.
int rng_coin(double p);

// A number from low to high, both included. Takes no number from the stream when low >= high.
std::int32_t rng_range(std::int32_t low, std::int32_t high);

} // namespace pelmora
