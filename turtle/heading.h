// Two kinds of heading with one interface: whole degrees, which is fast, and all others. Both give
// the same directions and circles for the same turns.
#pragma once

#include "turtle/heading_table.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace pelmora {

// How often a heading wrapped by a full turn, above 360 and below -360 degrees.
struct Circles {
    std::int64_t right = 0;
    std::int64_t left = 0;
};

// Whole degrees within a full turn to either side: directions come from the table.
class WholeHeading {
  public:
    static bool takes(double degrees) {
        const bool negative_zero = degrees == 0.0 && std::signbit(degrees); // not in the table
        return std::abs(degrees) <= kFullTurn && degrees == std::trunc(degrees) && !negative_zero;
    }

    explicit WholeHeading(double degrees) : index_(static_cast<int>(degrees) + kFullTurn) {}

    // `degrees` is at most a full turn, so the heading wraps at most once.
    void turn(int degrees) {
        index_ += degrees;
        if (static_cast<unsigned>(index_) > 2 * kFullTurn) [[unlikely]] {
            const bool right = index_ > 0;
            index_ += right ? -kFullTurn : kFullTurn;
            ++(right ? circles_.right : circles_.left);
        }
    }

    [[nodiscard]] Direction direction() const {
        return kDirections[static_cast<std::size_t>(index_)];
    }
    [[nodiscard]] double degrees() const { return index_ - kFullTurn; }
    [[nodiscard]] int direction_index() const { return index_; } // index in kDirections
    [[nodiscard]] const Circles& circles() const { return circles_; }

  private:
    int index_;
    Circles circles_;
};

class RealHeading {
  public:
    explicit RealHeading(double degrees) : degrees_(degrees) {}

    void turn(int degrees) {
        degrees_ += degrees;
        while (degrees_ > kFullTurn) {
            degrees_ -= kFullTurn;
            ++circles_.right;
        }
        while (degrees_ < -kFullTurn) {
            degrees_ += kFullTurn;
            ++circles_.left;
        }
    }

    [[nodiscard]] Direction direction() const {
        const double angle = degrees_ * kTurnPerDegree * kRadiansPerTurn;
        return {std::cos(angle), std::sin(angle)};
    }
    [[nodiscard]] double degrees() const { return degrees_; }
    [[nodiscard]] int direction_index() const { return 0; } // not in kDirections
    [[nodiscard]] const Circles& circles() const { return circles_; }

  private:
    double degrees_;
    Circles circles_;
};

} // namespace pelmora
