// The pixels of lines, compared with a second, per-pixel implementation of the rules.
#include "tests/contract/canvas.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace pelmora_test;

constexpr int kSize = 32;

using Number = std::int64_t;

struct Place {
    Number x, y;
};

struct Line {
    int width;
    Place from, to;
};

// a / b rounded, halves down; b > 0.
Number rounded(Number a, Number b) {
    const Number n = 2 * a - b; // ceil((2a - b) / 2b)
    return n >= 0 ? (n + 2 * b - 1) / (2 * b) : -(-n / (2 * b));
}

// A line one pixel wide: one pixel per step along the major axis; the minor coordinate is rounded.
// The end point is excluded.
bool in_thin_line(const Line& line, Place pixel) {
    const Number dx = line.to.x - line.from.x;
    const Number dy = line.to.y - line.from.y;
    if (dx == 0 && dy == 0) {
        return false;
    }
    const bool steep = std::abs(dy) > std::abs(dx);
    const Number length = steep ? dy : dx;
    const Number step = steep ? pixel.y - line.from.y : pixel.x - line.from.x;
    if (length > 0 ? step < 0 || step >= length : step > 0 || step <= length) {
        return false;
    }
    const Number magnitude = std::abs(length);
    const auto at = [&](Number start, Number drift) {
        return rounded(start * magnitude + drift * std::abs(step), magnitude);
    };
    return steep ? pixel.x == at(line.from.x, dx) : pixel.y == at(line.from.y, dy);
}

// A dot. Distances from its centre, which lies between pixels for even widths, are doubled.
bool in_dot(int width, Place middle, Place pixel) {
    const Number even = width % 2 == 0 ? 1 : 0;
    const Number x = std::abs(2 * (pixel.x - middle.x) + even);
    const Number y = std::abs(2 * (pixel.y - middle.y) + even);
    const auto [least, most] = std::minmax(x, y);
    const Number reach = width - 1;
    return most <= reach && (least <= 1 || (most - 1) * (most - 1) + least * least < reach * reach);
}

// The band between the ends. Its corners are integers; it includes the pixels on its left edges and
// on a horizontal top edge.
bool in_band(const Line& line, Place pixel) {
    const Number dx = line.to.x - line.from.x;
    const Number dy = line.to.y - line.from.y;
    if (dx == 0 && dy == 0) {
        return false;
    }
    const auto side = [&](Number extent) {
        const double length = std::sqrt(static_cast<double>(dx * dx + dy * dy));
        const double exact = static_cast<double>(line.width * extent) / length;
        return static_cast<Number>(exact) + (dx != 0 && dy != 0 ? 1 : 0);
    };
    const Number across = side(std::abs(dy));
    const Number down = side(std::abs(dx)) * (dx * dy > 0 ? -1 : 1);
    const Number odd_down = down < 0 ? -1 : 1;
    const Place right{(across + 1) / 2, (down + odd_down) / 2};
    const Place left{-(across / 2), -(down / 2)};
    const Place corners[] = {{line.from.x + right.x, line.from.y + right.y},
                             {line.to.x + right.x, line.to.y + right.y},
                             {line.to.x + left.x, line.to.y + left.y},
                             {line.from.x + left.x, line.from.y + left.y}};
    const bool clockwise = dx * (left.y - right.y) - dy * (left.x - right.x) > 0;
    for (int i = 0; i < 4; ++i) {
        const Place& a = corners[clockwise ? i : (i + 1) % 4];
        const Place& b = corners[clockwise ? (i + 1) % 4 : i];
        const Number inward = (b.x - a.x) * (pixel.y - a.y) - (b.y - a.y) * (pixel.x - a.x);
        const bool kept = b.y < a.y || (b.y == a.y && b.x > a.x);
        if (inward < 0 || (inward == 0 && !kept)) {
            return false;
        }
    }
    return true;
}

bool in_line(const Line& line, Place pixel) {
    if (line.width <= 1) {
        return in_thin_line(line, pixel);
    }
    return in_dot(line.width, line.from, pixel) || in_dot(line.width, line.to, pixel) ||
           in_band(line, pixel);
}

class LinePixels : public testing::Test {
  protected:
    // The picture of one line.
    std::string drawn(const Line& line) {
        return drawn(line.width, [&line](HDC device) {
            EXPECT_EQ(MoveToEx(device, static_cast<int>(line.from.x), static_cast<int>(line.from.y),
                               nullptr),
                      1);
            EXPECT_EQ(LineTo(device, static_cast<int>(line.to.x), static_cast<int>(line.to.y)), 1);
        });
    }

    template <typename Draw>
    std::string drawn(int width, Draw draw) {
        canvas_.clear();
        HGDIOBJ before = SelectObject(canvas_.dc(), CreatePen(PS_SOLID, width, kInk));
        draw(canvas_.dc());
        DeleteObject(SelectObject(canvas_.dc(), before));
        return canvas_.picture();
    }

    static std::string expected(const std::vector<Line>& lines) {
        std::string rows;
        for (int y = 0; y < kSize; ++y) {
            for (int x = 0; x < kSize; ++x) {
                const auto here = [x, y](const Line& line) { return in_line(line, {x, y}); };
                rows += std::any_of(lines.begin(), lines.end(), here) ? '#' : '.';
            }
            rows += '\n';
        }
        return rows;
    }

    Canvas canvas_{kSize, kSize};
};

TEST_F(LinePixels, FollowTheRuleAnywhere) {
    std::mt19937 random(1); // a fixed seed
    const auto within = [&random](int reach) {
        return static_cast<int>(random() % static_cast<unsigned>(2 * reach + kSize)) - reach;
    };
    for (const int reach : {0, 10, 100, 20'000}) {
        for (int i = 0; i < 1500; ++i) {
            const int width = static_cast<int>(random() % (i % 3 == 0 ? 21 : 4));
            // One end near the surface, so that most lines meet it.
            const Place one{within(std::min(reach, 10)), within(std::min(reach, 10))};
            const Place other{within(reach), within(reach)};
            const Line line = i % 2 == 0 ? Line{width, one, other} : Line{width, other, one};
            ASSERT_EQ(drawn(line), expected({line}))
                << "width " << width << " from " << line.from.x << ',' << line.from.y << " to "
                << line.to.x << ',' << line.to.y;
        }
    }
}

// Thin lines exclude their end points, so a line of length zero draws nothing.
TEST_F(LinePixels, OfPolylinesAreThoseOfTheirLines) {
    std::mt19937 random(2);
    for (int i = 0; i < 1000; ++i) {
        std::vector<POINT> points(2 + random() % 6);
        for (POINT& point : points) {
            point = {static_cast<LONG>(random() % 60) - 14, static_cast<LONG>(random() % 60) - 14};
        }
        points.back() = i % 4 == 0 ? points.front() : points.back();
        std::vector<Line> lines;
        for (std::size_t at = 1; at < points.size(); ++at) {
            const POINT& from = points[at - 1];
            lines.push_back({i % 2, {from.x, from.y}, {points[at].x, points[at].y}});
        }
        const auto draw = [&points](HDC device) {
            EXPECT_EQ(Polyline(device, points.data(), static_cast<int>(points.size())), 1);
        };
        ASSERT_EQ(drawn(i % 2, draw), expected(lines)) << i;
    }
}

} // namespace
