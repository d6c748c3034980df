// Generations of 48 turtles, of several ages and seeds.
#pragma once

#include "bench/generations.h"

namespace pelmora_bench {

inline constexpr int kBredAges[] = {3, 50, 500, 1000};
inline constexpr int kBredSeeds = 3;
inline constexpr int kBredLifers = 48;

// The generation of one of these ages. All are bred at the first call, which takes some ten
// seconds, and always in one order, as a seed leaves something of the stream before it.
Generations& bred(int age, int seed);

} // namespace pelmora_bench
