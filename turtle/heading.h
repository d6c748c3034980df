// Two kinds of heading with one interface: the one for whole degrees, which is fast, and the one
// for all others. Both give the same directions and circles for the same turns.
#pragma once

#include "turtle/heading_table.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace pelmora {

// How often a heading was brought back by a full turn, from above and from below.
struct Circles {
    std::int64_t right;
    std::int64_t left;
};

// Whole degrees within a full turn to either side: directions come from the table.
class WholeHeading {
  public:
    static bool takes(double degrees) {
        const bool negative_zero = degrees == 0.0 && std::signbit(degrees); // not in the table
        return std::abs(degrees) <= kFullTurn && degrees == std::trunc(degrees) && !negative_zero;
    }

    explicit WholeHeading(double degrees) : place_(static_cast<int>(degrees) + kFullTurn) {}

    // At most a full turn, so it closes at most one circle.
    void turn(int degrees) {
        place_ += degrees;
        if (static_cast<unsigned>(place_) > 2 * kFullTurn) [[unlikely]] {
            const bool right = place_ > 0;
            place_ += right ? -kFullTurn : kFullTurn;
            ++(right ? circles_.right : circles_.left);
        }
    }

    // Turns that follow each other, added up.
    struct Sum {
        std::int64_t all = 0;
        std::int64_t most = 0;  // of the sums on the way, and 0
        std::int64_t least = 0; // likewise
        bool one_way = true;

        void add(int degrees) {
            one_way = one_way && (degrees > 0 ? all >= 0 : all <= 0);
            all += degrees;
            most = std::max(most, all);
            least = std::min(least, all);
        }
    };

    // Makes the same turns `times` over. `once` makes them singly, by turn(), which is asked for
    // where they may close a circle.
    template <class Once>
    void spin(const Sum& sum, std::int64_t times, Once once) {
        if (sum.one_way) {
            turn_far(sum.all * times);
            return;
        }
        while (times > 0) {
            const std::int64_t free = std::min(times, times_in_circle(sum));
            place_ += static_cast<int>(free * sum.all);
            times -= free;
            if (times > 0) {
                once();
                --times;
            }
        }
    }

    [[nodiscard]] Direction direction() const {
        return kDirections[static_cast<std::size_t>(place_)];
    }
    [[nodiscard]] double degrees() const { return place_ - kFullTurn; }
    // Of the direction in its table.
    [[nodiscard]] int place() const { return place_; }
    [[nodiscard]] const Circles& circles() const { return circles_; }

  private:
    // Any way in turns of one direction.
    void turn_far(std::int64_t degrees) {
        constexpr std::int64_t kRange = std::int64_t{2} * kFullTurn;
        std::int64_t place = place_ + degrees;
        if (place > kRange) {
            const std::int64_t closed = (place - kRange + kFullTurn - 1) / kFullTurn;
            place -= closed * kFullTurn;
            circles_.right += closed;
        } else if (place < 0) {
            const std::int64_t closed = (-place + kFullTurn - 1) / kFullTurn;
            place += closed * kFullTurn;
            circles_.left += closed;
        }
        place_ = static_cast<int>(place);
    }

    // How often turns can be made that close no circle.
    [[nodiscard]] std::int64_t times_in_circle(const Sum& sum) const {
        const std::int64_t above = std::int64_t{2} * kFullTurn - (place_ + sum.most);
        const std::int64_t below = place_ + sum.least;
        if (above < 0 || below < 0) {
            return 0;
        }
        if (sum.all == 0) {
            return std::numeric_limits<std::int64_t>::max();
        }
        return (sum.all > 0 ? above / sum.all : below / -sum.all) + 1;
    }

    int place_;
    Circles circles_{};
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
    [[nodiscard]] const Circles& circles() const { return circles_; }

  private:
    double degrees_;
    Circles circles_{};
};

} // namespace pelmora
