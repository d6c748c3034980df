// A colour as one number, so that adding to any component is one addition.
#pragma once

#include <cstdint>

namespace pelmora {

// Three components of 8 bits, each with room above it for the carry that is thrown away.
using PackedColor = std::uint64_t;

constexpr PackedColor color_pack(int red, int green, int blue) {
    return static_cast<PackedColor>(red & 255) | static_cast<PackedColor>(green & 255) << 16U |
           static_cast<PackedColor>(blue & 255) << 32U;
}

// The sum of every component, modulo 256.
constexpr PackedColor color_add(PackedColor a, PackedColor b) {
    return (a + b) & color_pack(255, 255, 255);
}

constexpr int color_red(PackedColor color) {
    return static_cast<int>(color & 255U);
}

constexpr int color_green(PackedColor color) {
    return static_cast<int>(color >> 16U & 255U);
}

constexpr int color_blue(PackedColor color) {
    return static_cast<int>(color >> 32U & 255U);
}

} // namespace pelmora
