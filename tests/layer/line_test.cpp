// Lines against a second reading of their rule, in exact fractions.
#include "platform/qt/line.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <utility>
#include <vector>

namespace {

using platform::PixelRect;

constexpr int kSize = 40;

class Canvas {
  public:
    void line(const PixelRect& clip, int x0, int y0, int x1, int y1) {
        platform::draw_line({pixels_.data(), kSize}, clip, x0, y0, x1, y1, 1);
    }
    void plot(std::int64_t x, std::int64_t y) {
        pixels_[static_cast<std::size_t>(y * kSize + x)] = 1;
    }
    bool operator==(const Canvas&) const = default;

  private:
    std::vector<std::uint32_t> pixels_ = std::vector<std::uint32_t>(std::size_t{kSize} * kSize);
};

// a / b rounded, a half downward; b > 0.
std::int64_t rounded(std::int64_t a, std::int64_t b) {
    const std::int64_t n = 2 * a - b; // ceil((2a - b) / 2b)
    return n >= 0 ? (n + 2 * b - 1) / (2 * b) : -(-n / (2 * b));
}

// Every pixel of the line by itself: the ideal minor coordinate of each major one, rounded.
Canvas expected(const PixelRect& clip, int x0, int y0, int x1, int y1) {
    Canvas canvas;
    const bool steep = std::abs(y1 - y0) > std::abs(x1 - x0);
    const auto [a0, b0] = steep ? std::pair(y0, x0) : std::pair(x0, y0);
    const auto [a1, b1] = steep ? std::pair(y1, x1) : std::pair(x1, y1);
    const std::int64_t length = std::abs(a1 - a0);
    for (int k = 0; k < length; ++k) {
        const int a = a0 + (a1 < a0 ? -k : k);
        const std::int64_t b =
            rounded(b0 * length + static_cast<std::int64_t>(b1 - b0) * k, length);
        const std::int64_t x = steep ? b : a;
        const std::int64_t y = steep ? a : b;
        if (x >= clip.left && x < clip.right && y >= clip.top && y < clip.bottom) {
            canvas.plot(x, y);
        }
    }
    return canvas;
}

void compare(const PixelRect& clip, int x0, int y0, int x1, int y1) {
    Canvas canvas;
    canvas.line(clip, x0, y0, x1, y1);
    ASSERT_TRUE(canvas == expected(clip, x0, y0, x1, y1))
        << '(' << x0 << ',' << y0 << ") to (" << x1 << ',' << y1 << ") in " << clip.left << ','
        << clip.top << ',' << clip.right << ',' << clip.bottom;
}

TEST(Line, PicksThePixelsOfTheRule) {
    struct Case {
        int x0, y0, x1, y1;
        std::vector<std::pair<int, int>> pixels;
    };
    const Case cases[] = {
        {0, 0, 5, 2, {{0, 0}, {1, 0}, {2, 1}, {3, 1}, {4, 2}}},
        {5, 2, 0, 0, {{5, 2}, {4, 2}, {3, 1}, {2, 1}, {1, 0}}},
        {0, 0, 2, 5, {{0, 0}, {0, 1}, {1, 2}, {1, 3}, {2, 4}}},
        {4, 4, 4, 4, {}},
        {3, 3, 0, 0, {{3, 3}, {2, 2}, {1, 1}}},
    };
    for (const Case& c : cases) {
        Canvas drawn;
        drawn.line({0, 0, kSize, kSize}, c.x0, c.y0, c.x1, c.y1);
        Canvas wanted;
        for (const auto& [x, y] : c.pixels) {
            wanted.plot(x, y);
        }
        EXPECT_TRUE(drawn == wanted) << c.x0 << ',' << c.y0 << " to " << c.x1 << ',' << c.y1;
    }
}

TEST(Line, AgreesWithTheRuleEverywhereAndHoweverClipped) {
    std::mt19937 random(1);
    const auto in = [&random](int low, int high) {
        return std::uniform_int_distribution(low, high)(random);
    };
    for (const int reach : {30, 200, 100'000}) {
        for (int i = 0; i < 20'000 / (reach > 1000 ? 100 : 1); ++i) {
            const PixelRect clip{in(0, 20), in(0, 20), in(10, kSize), in(10, kSize)};
            compare(clip, in(-reach, reach), in(-reach, reach), in(-reach, reach),
                    in(-reach, reach));
        }
    }
}

TEST(Line, FarAndEmptyOnesTouchNothingElse) {
    Canvas canvas;
    const int far = 2'147'483'647;
    canvas.line({5, 5, 5, 20}, 0, 10, 30, 10);                // an empty clip
    canvas.line({0, 0, kSize, kSize}, -far - 1, -5, far, -5); // beside the image
    canvas.line({0, 0, kSize, kSize}, far, -far, far, far);
    EXPECT_TRUE(canvas == Canvas());
    canvas.line({10, 0, 12, kSize}, -far, 7, far, 7);
    Canvas two;
    two.plot(10, 7);
    two.plot(11, 7);
    EXPECT_TRUE(canvas == two);
}

} // namespace
