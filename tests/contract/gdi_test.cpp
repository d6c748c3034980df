// Drawing calls: their pixels, their results, and the lifetime of objects.
#include "tests/contract/canvas.h"

namespace {

using namespace pelmora_test;

constexpr int kWidth = 12;
constexpr int kHeight = 8;

class Gdi : public testing::Test {
  protected:
    Gdi() { canvas_.clear(); }
    ~Gdi() override { DeleteObject(ink_); }

    // The pixels without the white ends of rows and without white rows at the end; "" when nothing
    // was drawn.
    std::string drawn() const {
        std::string rows;
        std::string blank;
        const std::string all = canvas_.picture();
        for (std::size_t at = 0; at < all.size(); at += kWidth + 1) {
            const std::string row = all.substr(at, kWidth);
            const std::size_t end = row.find_last_not_of('.');
            if (end == std::string::npos) {
                blank += '\n';
                continue;
            }
            rows += blank + row.substr(0, end + 1) + '\n';
            blank.clear();
        }
        return rows;
    }

    Canvas canvas_{kWidth, kHeight};
    HDC dc_ = canvas_.dc();
    HBRUSH ink_ = CreateSolidBrush(kInk);
};

TEST_F(Gdi, FillsAndFramesExcludeTheRightAndBottomEdges) {
    struct Case {
        RECT area;
        const char* filled;
        const char* framed;
    };
    const Case cases[] = {
        {{1, 1, 5, 4}, "\n.####\n.####\n.####\n", "\n.####\n.#..#\n.####\n"},
        {{2, 0, 4, 2}, "..##\n..##\n", "..##\n..##\n"},
        {{2, 0, 3, 3}, "..#\n..#\n..#\n", "..#\n..#\n..#\n"},
        {{-3, -3, 2, 3}, "##\n##\n##\n", ".#\n.#\n##\n"},
        {{10, 6, 99, 99},
         "\n\n\n\n\n\n..........##\n..........##\n",
         "\n\n\n\n\n\n..........##\n..........#\n"},
        {{50, 1, 60, 2}, "", ""},
        {{4, 4, 4, 6}, "", nullptr},
        {{4, 4, 6, 4}, "", nullptr},
        {{6, 6, 4, 4}, nullptr, nullptr}, // not filled by the program
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.area.left * 100 + c.area.top);
        if (c.filled != nullptr) {
            EXPECT_NE(FillRect(dc_, &c.area, ink_), 0);
            EXPECT_EQ(drawn(), c.filled);
            canvas_.clear();
        }
        EXPECT_EQ(FrameRect(dc_, &c.area, ink_), c.framed != nullptr ? 1 : 0);
        EXPECT_EQ(drawn(), c.framed != nullptr ? c.framed : "");
        canvas_.clear();
    }
}

TEST_F(Gdi, ADeletedPenStaysSelectedUntilItIsReplaced) {
    HPEN pen = CreatePen(PS_SOLID, 0, kInk);
    HGDIOBJ first = SelectObject(dc_, pen);
    EXPECT_EQ(first, GetStockObject(BLACK_PEN));
    EXPECT_EQ(DeleteObject(pen), 1);
    EXPECT_EQ(DeleteObject(first), 1); // a stock object stays
    EXPECT_EQ(GetCurrentObject(dc_, OBJ_PEN), pen);
    EXPECT_EQ(MoveToEx(dc_, 1, 0, nullptr), 1);
    EXPECT_EQ(LineTo(dc_, 4, 0), 1);
    EXPECT_EQ(LineTo(dc_, 4, 0), 1); // of length zero
    EXPECT_EQ(drawn(), ".###\n");
    EXPECT_EQ(SelectObject(dc_, first), pen);
    LineTo(dc_, 6, 0); // from the current point
    EXPECT_EQ(drawn(), ".###00\n");

    EXPECT_EQ(SelectObject(dc_, nullptr), nullptr); // as when memory for a pen ran out
    EXPECT_EQ(DeleteObject(nullptr), 0);
    EXPECT_EQ(GetCurrentObject(dc_, OBJ_PEN), first);
}

TEST_F(Gdi, CopiesWhatLiesInBothBitmaps) {
    Canvas other(4, 4);
    const RECT corner{0, 0, 3, 2};
    FillRect(dc_, &corner, ink_);
    EXPECT_EQ(SelectObject(other.dc(), canvas_.bitmap()), nullptr); // selected elsewhere
    EXPECT_EQ(BitBlt(other.dc(), 1, 1, 100, 100, dc_, 1, 0, SRCCOPY), 1);
    EXPECT_EQ(other.picture(), "0000\n"
                               "0##.\n"
                               "0##.\n"
                               "0...\n");
    struct Case {
        int x, y, width, height, from_x, from_y;
        const char* drawn;
    };
    const Case cases[] = {{-1, -1, 8, 8, 0, 0, "##\n##\n"},
                          {2, 1, 8, 8, -2, -2, "\n\n\n....0000\n....0##\n....0##\n....0\n"},
                          {11, 7, 4, 4, 1, 1, "\n\n\n\n\n\n\n...........#\n"},
                          {2, 1, 1, 2, 1, 1, "\n..#\n..#\n"},
                          {2, 1, 0, 2, 1, 1, ""},
                          {50, 1, 4, 4, 0, 0, ""},
                          {0, 0, 4, 4, 10, 10, ""}};
    for (const Case& c : cases) {
        canvas_.clear();
        EXPECT_EQ(BitBlt(dc_, c.x, c.y, c.width, c.height, other.dc(), c.from_x, c.from_y, SRCCOPY),
                  1);
        EXPECT_EQ(drawn(), c.drawn) << c.x << ',' << c.y;
    }
}

// When memory runs out the program continues without a bitmap.
TEST_F(Gdi, WithoutABitmapNothingFails) {
    HDC screen = GetDC(nullptr);
    EXPECT_GT(GetDeviceCaps(screen, HORZRES), 0);
    EXPECT_GT(GetDeviceCaps(screen, VERTRES), 0);
    EXPECT_EQ(CreateCompatibleBitmap(screen, 2'000'000'000, 2'000'000'000), nullptr);
    EXPECT_EQ(CreateCompatibleBitmap(nullptr, 5, 5), nullptr);
    HDC empty = CreateCompatibleDC(screen);
    ReleaseDC(nullptr, screen);
    HPEN pen = CreatePen(PS_SOLID, 3, kInk);
    EXPECT_EQ(SelectObject(empty, pen), GetStockObject(BLACK_PEN));
    EXPECT_EQ(MoveToEx(empty, 1, 1, nullptr), 1);
    EXPECT_EQ(LineTo(empty, 9, 9), 1);
    const RECT any{0, 0, 5, 5};
    EXPECT_NE(FillRect(empty, &any, ink_), 0);
    EXPECT_EQ(BitBlt(empty, 0, 0, 5, 5, dc_, 0, 0, SRCCOPY), 1);
    EXPECT_TRUE(DeleteDC(empty));
    EXPECT_TRUE(DeleteObject(pen));

    EXPECT_EQ(MoveToEx(nullptr, 1, 1, nullptr), 0);
    EXPECT_EQ(LineTo(nullptr, 9, 9), 0);
    EXPECT_EQ(SelectObject(nullptr, GetStockObject(BLACK_PEN)), nullptr);
    EXPECT_EQ(GetCurrentObject(nullptr, OBJ_PEN), nullptr);
    EXPECT_EQ(FrameRect(dc_, &any, nullptr), 0);
    EXPECT_FALSE(RectVisible(nullptr, &any));
    EXPECT_EQ(BitBlt(dc_, 0, 0, 5, 5, nullptr, 0, 0, SRCCOPY), 0);
    EXPECT_EQ(BitBlt(nullptr, 0, 0, 5, 5, dc_, 0, 0, SRCCOPY), 0);
    EXPECT_FALSE(DeleteDC(nullptr));
    EXPECT_EQ(drawn(), "");
}

} // namespace
