// A bitmap to draw on, and its pixels as text.
#pragma once

#include "platform/win32.h"

#include <gtest/gtest.h>

#include <string>

namespace pelmora_test {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kInk = RGB(0x12, 0x34, 0x56);

// A bitmap compatible with the screen in a memory device context; black at first.
class Canvas {
  public:
    Canvas(int width, int height) : width_(width), height_(height) {
        HDC screen = GetDC(nullptr);
        dc_ = CreateCompatibleDC(screen);
        bitmap_ = CreateCompatibleBitmap(screen, width, height);
        SelectObject(dc_, bitmap_);
        EXPECT_EQ(ReleaseDC(nullptr, screen), 1);
    }
    ~Canvas() {
        EXPECT_TRUE(DeleteDC(dc_));
        EXPECT_TRUE(DeleteObject(bitmap_));
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC dc() const { return dc_; }
    HBITMAP bitmap() const { return bitmap_; }

    // Makes it white.
    void clear() const {
        const RECT all{0, 0, width_, height_};
        EXPECT_NE(FillRect(dc_, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH))), 0);
    }
    // The pixels, a line for each row: "." white, "#" ink, "0" black, "?" anything else.
    std::string picture() const {
        std::string rows;
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) {
                const COLORREF pixel = GetPixel(dc_, x, y);
                rows += pixel == kWhite ? '.' : pixel == kInk ? '#' : pixel == 0 ? '0' : '?';
            }
            rows += '\n';
        }
        return rows;
    }

  private:
    int width_, height_;
    HDC dc_;
    HBITMAP bitmap_;
};

} // namespace pelmora_test
