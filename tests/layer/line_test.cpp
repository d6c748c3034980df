// Clipping of lines. Their pixels are checked by the contract tests.
#include "gdi/wide_line.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace {

using platform::PixelRect;

constexpr int kSize = 40;
constexpr PixelRect kAll{0, 0, kSize, kSize};

class Canvas {
  public:
    void line(const PixelRect& clip, int x0, int y0, int x1, int y1, int width = 1) {
        if (width <= 1) {
            const POINT ends[] = {{x0, y0}, {x1, y1}};
            platform::draw_lines({pixels_.data(), kSize}, clip, ends, 2, 1);
        } else {
            platform::draw_wide_line({pixels_.data(), kSize}, clip, x0, y0, x1, y1, width, 1);
        }
    }
    void erase_outside(const PixelRect& clip) {
        for (int i = 0; i < kSize * kSize; ++i) {
            if (!clip.contains(i % kSize, i / kSize)) {
                pixels_[static_cast<std::size_t>(i)] = 0;
            }
        }
    }
    bool operator==(const Canvas&) const = default;

  private:
    std::vector<std::uint32_t> pixels_ = std::vector<std::uint32_t>(std::size_t{kSize} * kSize);
};

TEST(Line, ClippingDoesNotMovePixels) {
    std::mt19937 random(1); // a fixed seed
    const auto in = [&random](int low, int high) {
        return std::uniform_int_distribution(low, high)(random);
    };
    for (const int reach : {30, 200, 100'000}) {
        for (int i = 0; i < 10'000; ++i) {
            const PixelRect clip{in(0, 20), in(0, 20), in(10, kSize), in(10, kSize)};
            const int x0 = in(-reach, reach);
            const int y0 = in(-reach, reach);
            const int x1 = in(-reach, reach);
            const int y1 = in(-reach, reach);
            const int width = i % 2 == 0 ? 1 : in(2, 30);
            Canvas clipped;
            clipped.line(clip, x0, y0, x1, y1, width);
            Canvas cut;
            cut.line(kAll, x0, y0, x1, y1, width);
            cut.erase_outside(clip);
            ASSERT_TRUE(clipped == cut)
                << '(' << x0 << ',' << y0 << ") to (" << x1 << ',' << y1 << ") in " << clip.left
                << ',' << clip.top << ',' << clip.right << ',' << clip.bottom << ", " << width;
        }
    }
}

TEST(Line, ExtremeCoordinatesAndClipsWriteOnlyInsideTheClip) {
    const int far = 2'147'483'647;
    for (const int width : {1, 2, 3}) {
        Canvas canvas;
        canvas.line({5, 5, 5, 20}, 0, 10, 30, 10, width); // an empty clip
        canvas.line(kAll, -far - 1, -5, far, -5, width);  // outside the image
        canvas.line(kAll, far, -far, far, far, width);
        EXPECT_TRUE(canvas == Canvas());
        canvas.line({10, 0, 12, kSize}, -far, 7, far, 7, width);
        Canvas two;
        for (int row = 7 - width / 2; row < 7 - width / 2 + width; ++row) {
            two.line({10, 0, 12, kSize}, 0, row, kSize, row);
        }
        EXPECT_TRUE(canvas == two);
    }
    Canvas full;
    full.line({10, 7, 12, 8}, -far, far, far, -far, far); // a pen wider than the image
    Canvas two;
    two.line({10, 7, 12, 8}, 0, 7, 30, 7);
    EXPECT_TRUE(full == two);
}

} // namespace
