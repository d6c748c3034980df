// What the screen shows of a window, also where the toolkit scales: layer_test.dense runs these
// tests with a factor that is to be rounded to 2.
#include "frames/frame.h"
#include "platform/testing/qt/user_screen.h"
#include "tests/contract/test_windows.h"

#include <QApplication>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

using namespace pelmora_test;

struct Shown {
    int wrong = 0;  // pixels of the program that the screen does not show as they were drawn
    int uneven = 0; // and those that are not one colour on the screen
};

// Compares an area of a window with the screen, where each pixel must be a square.
Shown compare_with_screen(HWND window, const RECT& area) {
    settle();
    auto* frame = static_cast<platform::Frame*>(platform::window_of(window)->widget());
    const QImage screen = user::window_image(frame);
    const double factor = screen.devicePixelRatio();
    EXPECT_EQ(factor, std::floor(factor));
    const int side = static_cast<int>(factor);
    const QPoint origin = frame->client()->mapTo(frame, QPoint(0, 0));
    HDC device = GetDC(window);
    Shown shown;
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            const QRect square(QPoint(x, y) * side + origin * side, QSize(side, side));
            const QRgb first = screen.pixel(square.topLeft());
            const COLORREF drawn = GetPixel(device, x, y);
            QImage even(side, side, screen.format());
            even.fill(QColor(first));
            shown.uneven += screen.copy(square) != even ? 1 : 0;
            shown.wrong +=
                drawn != RGB(BYTE(qRed(first)), BYTE(qGreen(first)), BYTE(qBlue(first))) ? 1 : 0;
        }
    }
    ReleaseDC(window, device);
    return shown;
}

void fill(HWND window, const RECT& area, COLORREF color) {
    HDC device = GetDC(window);
    HBRUSH brush = CreateSolidBrush(color);
    FillRect(device, &area, brush);
    DeleteObject(brush);
    ReleaseDC(window, device);
}

TEST_F(Windows, ShowEachPixelAsASquareAndTextAtFullResolution) {
    constexpr RECT kNoise{3, 5, 64, 48};
    std::mt19937 random(1);
    for (int y = kNoise.top; y < kNoise.bottom; ++y) {
        for (int x = kNoise.left; x < kNoise.right; ++x) {
            fill(window_, {x, y, x + 1, y + 1}, random() & 0xFFFFFFU);
        }
    }
    const auto expect_squares = [&](const RECT& area) {
        const Shown shown = compare_with_screen(window_, area);
        EXPECT_EQ(shown.wrong, 0);
        EXPECT_EQ(shown.uneven, 0);
    };
    expect_squares({0, 0, 70, 50});
    fill(window_, {7, 9, 20, 12}, 0); // only this part is shown again
    expect_squares({0, 0, 70, 50});

    RECT line{5, 60, 105, 77};
    HDC device = GetDC(window_);
    EXPECT_GT(DrawTextA(device, "Ready.", -1, &line, DT_SINGLELINE | DT_BOTTOM), 0);
    ReleaseDC(window_, device);
    const Shown text = compare_with_screen(window_, line);
    EXPECT_GT(text.wrong, 0); // it is there
    EXPECT_EQ(text.uneven > 0, qApp->devicePixelRatio() > 1);
    fill(window_, {5, 60, 105, 70}, RGB(255, 255, 255));
    expect_squares({5, 60, 105, 70}); // half of the text is covered
    EXPECT_GT(compare_with_screen(window_, line).wrong, 0);
    fill(window_, line, RGB(255, 255, 255));
    expect_squares(line);
}

TEST_F(Windows, LargeFontsAreMadeToFitAreasInPixels) {
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPixelSize(40);
    QApplication::setFont(large);
    RECT line{5, 60, 105, 77};
    HDC device = GetDC(window_);
    EXPECT_LE(DrawTextA(device, "Ready.", -1, &line, DT_SINGLELINE | DT_BOTTOM), 17);
    ReleaseDC(window_, device);
    HWND button =
        CreateWindowExA(0, "BUTTON", "Redraw...", WS_CHILD | WS_VISIBLE, 120, 8, 100, 21, window_,
                        reinterpret_cast<HMENU>(std::uintptr_t{7}), nullptr, nullptr);
    EXPECT_LT(platform::window_of(button)->widget()->fontMetrics().height(), 21);
    QApplication::setFont(usual);
}

} // namespace
