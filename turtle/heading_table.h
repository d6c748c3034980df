// The directions of whole-degree headings.
#pragma once

#include <array>

namespace pelmora {

// A step of length 1.
struct Direction {
    double cos, sin;
};

// One degree in radians is the product of these two, in this order: heading * kTurnPerDegree *
// kRadiansPerTurn. They are not exact, and every picture and score depends on their exact digits.
inline constexpr double kTurnPerDegree = 0.002777777777777778;
inline constexpr double kRadiansPerTurn = 6.283185307;

// The largest heading, of either sign.
inline constexpr int kFullTurn = 360;

// The cosine and sine of every whole heading; that of h degrees is at index h + kFullTurn. C
// libraries differ in the last bit of some of them, so they are constants: a program gets the same
// score everywhere.
extern const std::array<Direction, 2 * kFullTurn + 1> kDirections;

} // namespace pelmora
