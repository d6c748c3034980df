// Small counts that share a number, so that one addition serves them all and the run's numbers fit
// into registers.
#pragma once

#include <cstdint>

namespace pelmora {

// A colour in the low half, 8 bits and room for a carry to each component; in the high half, how
// often it was added to.
using PackedColor = std::uint64_t;

constexpr PackedColor color_pack(int red, int green, int blue) {
    return static_cast<PackedColor>(red & 255) | static_cast<PackedColor>(green & 255) << 10U |
           static_cast<PackedColor>(blue & 255) << 20U;
}

// What adds to a component (0 red, 1 green, 2 blue), modulo 256, and counts once.
constexpr PackedColor color_increment(int component, int number) {
    return static_cast<PackedColor>(number) << (10 * component) | PackedColor{1} << 32U;
}

constexpr PackedColor color_add(PackedColor color, PackedColor increment) {
    return (color + increment) & (color_pack(255, 255, 255) | PackedColor{0xFFFFFFFF} << 32U);
}

constexpr int color_red(PackedColor color) {
    return static_cast<int>(color & 255U);
}
constexpr int color_green(PackedColor color) {
    return static_cast<int>(color >> 10U & 255U);
}
constexpr int color_blue(PackedColor color) {
    return static_cast<int>(color >> 20U & 255U);
}
constexpr std::int64_t color_changes(PackedColor color) {
    return static_cast<std::int64_t>(color >> 32U);
}

} // namespace pelmora
