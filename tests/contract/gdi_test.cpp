// Drawing calls: what they paint, what they return, and what survives.
#include "platform/win32.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kInk = RGB(0x12, 0x34, 0x56);
constexpr int kWidth = 12;
constexpr int kHeight = 8;

class Gdi : public testing::Test {
  protected:
    Gdi() {
        SelectObject(dc_, bitmap_);
        const RECT all{0, 0, kWidth, kHeight};
        FillRect(dc_, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    }
    ~Gdi() override {
        DeleteDC(dc_);
        EXPECT_TRUE(DeleteObject(bitmap_));
        DeleteObject(ink_);
    }
    // The picture, a character a pixel: "." white, "#" ink, "?" anything else.
    std::string picture() const {
        std::string rows;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const COLORREF pixel = GetPixel(dc_, x, y);
                rows += pixel == kWhite ? '.' : pixel == kInk ? '#' : '?';
            }
            rows += '\n';
        }
        return rows;
    }
    int ink_pixels() const {
        const std::string all = picture();
        EXPECT_EQ(all.find('?'), std::string::npos);
        return static_cast<int>(std::count(all.begin(), all.end(), '#'));
    }
    void line(int x0, int y0, int x1, int y1) {
        EXPECT_EQ(MoveToEx(dc_, x0, y0, nullptr), 1);
        EXPECT_EQ(LineTo(dc_, x1, y1), 1);
    }

    HDC dc_ = CreateCompatibleDC(nullptr);
    HBITMAP bitmap_ = CreateCompatibleBitmap(dc_, kWidth, kHeight);
    HBRUSH ink_ = CreateSolidBrush(kInk);
};

TEST_F(Gdi, FillsAndFramesToTheEdgesThatAreLeftOut) {
    const RECT filled{1, 1, 3, 4};
    EXPECT_EQ(FillRect(dc_, &filled, ink_), 1);
    const RECT framed{5, 1, 10, 6};
    EXPECT_EQ(FrameRect(dc_, &framed, ink_), 1);
    EXPECT_EQ(picture(), "............\n"
                         ".##..#####..\n"
                         ".##..#...#..\n"
                         ".##..#...#..\n"
                         ".....#...#..\n"
                         ".....#####..\n"
                         "............\n"
                         "............\n");
    for (const RECT& empty : {RECT{4, 4, 4, 6}, RECT{4, 4, 6, 4}, RECT{6, 6, 4, 4}}) {
        EXPECT_EQ(FrameRect(dc_, &empty, ink_), 0);
    }
    const RECT beyond{-100, 7, 1000, 1000};
    FillRect(dc_, &beyond, ink_);
    EXPECT_EQ(ink_pixels(), 6 + 16 + kWidth);
}

TEST_F(Gdi, ADeletedPenDrawsOnUntilItIsReplaced) {
    HPEN pen = CreatePen(PS_SOLID, 0, kInk);
    HGDIOBJ first = SelectObject(dc_, pen);
    EXPECT_EQ(first, GetStockObject(BLACK_PEN));
    EXPECT_EQ(DeleteObject(pen), 1);
    EXPECT_EQ(DeleteObject(first), 1); // a stock object stays
    line(2, 3, 6, 3);
    EXPECT_EQ(ink_pixels(), 4);
    line(7, 7, 7, 7);
    EXPECT_EQ(ink_pixels(), 4);
    POINT at{};
    MoveToEx(dc_, 0, 0, &at);
    EXPECT_TRUE(at.x == 7 && at.y == 7);
    EXPECT_EQ(SelectObject(dc_, first), pen);
    LineTo(dc_, 1, 0);
    EXPECT_EQ(GetPixel(dc_, 0, 0), RGB(0, 0, 0));
    EXPECT_EQ(SelectObject(dc_, nullptr), nullptr);
}

TEST_F(Gdi, CopiesWhatLiesInBothPictures) {
    const RECT corner{0, 0, 3, 2};
    FillRect(dc_, &corner, ink_);
    HDC other = CreateCompatibleDC(dc_);
    EXPECT_EQ(BitBlt(other, 0, 0, 2, 2, dc_, 0, 0, SRCCOPY), 1); // no bitmap: nothing to paint
    HBITMAP picture_of_its_own = CreateCompatibleBitmap(dc_, 4, 4);
    EXPECT_EQ(SelectObject(other, bitmap_), nullptr); // in one device context at a time
    SelectObject(other, picture_of_its_own);
    EXPECT_FALSE(DeleteObject(picture_of_its_own));
    EXPECT_EQ(BitBlt(other, 1, 1, 100, 100, dc_, 1, 0, SRCCOPY), 1);
    EXPECT_EQ(GetPixel(other, 1, 1), kInk);
    EXPECT_EQ(GetPixel(other, 2, 2), kInk);
    EXPECT_EQ(GetPixel(other, 3, 1), kWhite);
    EXPECT_EQ(GetPixel(other, 0, 0), RGB(0, 0, 0));
    EXPECT_EQ(GetPixel(other, 4, 0), CLR_INVALID);
    EXPECT_EQ(BitBlt(dc_, kWidth - 1, kHeight - 1, 4, 4, other, -2, -2, SRCCOPY), 1);
    DeleteDC(other);
    EXPECT_TRUE(DeleteObject(picture_of_its_own));
    EXPECT_EQ(ink_pixels(), 6);
}

TEST_F(Gdi, ImpossibleBitmapsAreRefused) {
    EXPECT_EQ(CreateCompatibleBitmap(dc_, 0, 5), nullptr);
    EXPECT_EQ(CreateCompatibleBitmap(dc_, 2'000'000'000, 2'000'000'000), nullptr);
    HDC empty = CreateCompatibleDC(dc_);
    const RECT any{0, 0, 5, 5};
    EXPECT_EQ(FillRect(empty, &any, ink_), 1);
    EXPECT_EQ(LineTo(empty, 9, 9), 1);
    EXPECT_FALSE(RectVisible(empty, &any));
    DeleteDC(empty);
}

} // namespace
