// Turtle positions as device coordinates.
#pragma once

#include <algorithm>
#include <cstdint>

namespace pelmora {

// From 0 to below this, rounding is adding 0.5 and truncating.
inline constexpr double kDeviceTop = 2147483647.0;

inline std::int32_t device_saturate(std::int64_t v) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(v, INT32_MIN, INT32_MAX));
}

// floor(v + 0.5), saturated. Without std::floor, whose call costs more than the rest of a step.
inline std::int32_t device_round(double v) {
    if (v >= 0.0 && v < kDeviceTop) [[likely]] { // nearly always; here truncation is floor
        // lround() is a call, too. NOLINTNEXTLINE(bugprone-incorrect-roundings)
        return static_cast<std::int32_t>(v + 0.5);
    }
    // In this order NaN has a defined result, too.
    const double raised = std::min(kDeviceTop, std::max(-2147483648.0, v + 0.5));
    const auto whole = static_cast<std::int32_t>(raised); // towards zero
    return whole - (whole > raised ? 1 : 0);
}

} // namespace pelmora
