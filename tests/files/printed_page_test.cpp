// The page that printing a turtle produces, rendered by another program.
#include "dialogs/print_dialog.h"
#include "files/printing.h"
#include "tests/files/folder.h"
#include "tests/support/answers.h"
#include "tests/support/trees.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace pelmora;
using namespace pelmora_test;

bool runs(std::string command) {
    return std::system(command.append(" >output.txt 2>&1").c_str()) == 0;
}

// The page in "printed.pdf" at 300 pixels per inch. Coordinates start at the top left corner and
// are clamped to the page.
class Page {
  public:
    Page() {
        EXPECT_TRUE(runs("pdftoppm -r 300 -singlefile printed.pdf page"));
        bytes_ = content_of("page.ppm");
        int start = 0;
        EXPECT_EQ(std::sscanf(bytes_.c_str(), "P6 %d %d 255%n", &width, &height, &start), 2);
        first_ = static_cast<std::size_t>(start) + 1;
        EXPECT_EQ(bytes_.size(), first_ + std::size_t{3} * static_cast<unsigned>(width * height));
    }
    COLORREF at(double x, double y) const {
        const int column = std::clamp(static_cast<int>(x), 0, width - 1);
        const int row = std::clamp(static_cast<int>(y), 0, height - 1);
        const std::size_t place = first_ + 3 * static_cast<std::size_t>(row * width + column);
        const auto part = [&](std::size_t i) { return static_cast<BYTE>(bytes_.at(place + i)); };
        return RGB(part(0), part(1), part(2));
    }

    int width = 0;
    int height = 0;

  private:
    std::string bytes_;
    std::size_t first_ = 0;
};

// The file of a page. It is removed first, as the test answers no overwrite question.
std::string new_page() {
    std::remove("printed.pdf");
    return std::filesystem::absolute("printed.pdf").string();
}

// The paper and the margin of the printer that writes files, in its pixels.
struct Paper {
    int width, height, margin_x, margin_y;
};

Paper paper(HWND owner) {
    HDC printer = printer_to(owner, new_page());
    const Paper found{GetDeviceCaps(printer, PHYSICALWIDTH), GetDeviceCaps(printer, PHYSICALHEIGHT),
                      GetDeviceCaps(printer, PHYSICALOFFSETX),
                      GetDeviceCaps(printer, PHYSICALOFFSETY)};
    DeleteDC(printer);
    return found;
}

// Prints with a pen of `width` device pixels.
Page printed(HWND owner, const ExprNode* tree, int width) {
    DrawContext ctx{};
    ctx.max_steps = kDefaultMaxSteps;
    Answers()
        .dialog("Print Pensize",
                [width](HWND dialog) {
                    user::type(dialog, IDC_PEN_SIZE, std::to_string(width));
                    user::press(dialog, "Return");
                })
        .print_to(new_page())
        .during([&] { EXPECT_EQ(PrintTurtleTree(owner, &ctx, tree), 1); });
    EXPECT_TRUE(runs("pdfinfo printed.pdf"));
    const std::string output = content_of("output.txt");
    EXPECT_NE(output.find("Pages:           1\n"), std::string::npos) << output;
    EXPECT_NE(output.find("Title:           Pelmora Print\n"), std::string::npos) << output;
    return {};
}

// Expects a length of colour along a row or a column of the page, and its middle, in pixels.
void expect_ink(const Page& page, bool row, double at, double length, double middle, double near) {
    constexpr double kWhite = 255.0; // of green: both colours have none
    double ink = 0.0;
    double moment = 0.0;
    for (int i = 0; i < (row ? page.width : page.height); ++i) {
        const COLORREF color = row ? page.at(i, at) : page.at(at, i);
        const double here = 1.0 - (color >> 8U & 0xFFU) / kWhite;
        ink += here;
        moment += here * (i + 0.5);
    }
    EXPECT_NEAR(ink, length, near);
    EXPECT_NEAR(moment / ink, middle, 1.0);
}

TEST(PrintedPage, HasTheRightScalePositionAndPen) {
    if (!runs("command -v pdftoppm && command -v pdfinfo")) {
        GTEST_SKIP() << "no program that reads PDF";
    }
    // To the right along the top, and down at the right end, in other proportions than paper's.
    const ExprTree wide =
        tree_of("( BLOCK ( FWD_100 ) ( LEFT_90 ) ( RED_64 ) ( FWD_10 ) ( FWD_50 ) )");
    const ExprTree high = tree_of("( BLOCK ( FWD_10 ) ( LEFT_90 ) ( FWD_100 ) ( FWD_100 ) )");
    HWND owner = show_owner();
    const Paper sheet = paper(owner);
    ASSERT_GT(sheet.margin_x, 0);
    const struct {
        int pen;
        bool by_width;
    } cases[] = {{0, true}, {60, true}, {12, false}};
    for (const auto& [pen, by_width] : cases) {
        SCOPED_TRACE(std::to_string(pen) + (by_width ? " wide" : " high"));
        const Page page = printed(owner, (by_width ? wide : high).get(), pen);
        const double dot = 1.0 * page.width / sheet.width; // page pixels per device pixel
        EXPECT_NEAR(sheet.height * dot, page.height, 1.0);
        // The bounds of both drawings begin at -2 and end 2 beyond their ends.
        const double unit = dot * (by_width ? (sheet.width - 2 * sheet.margin_x) / 104.0
                                            : (sheet.height - 2 * sheet.margin_y) / 204.0);
        const double left = sheet.margin_x * dot + 2 * unit;
        const double top = sheet.margin_y * dot + 2 * unit;
        const double across = (by_width ? 100 : 10) * unit;
        const double down = (by_width ? 60 : 200) * unit;
        const double right = left + across;
        const double thick = std::max(pen * dot, 1.0); // renderers widen thinner lines
        expect_ink(page, false, left + across / 2, thick, top, 0.6);
        expect_ink(page, true, top + down / 2, thick, right, 0.6);
        if (pen > 0) { // the ends of thin lines are blurred; they are rounded by half a pen
            expect_ink(page, true, top, across + thick, left + across / 2, 2.5);
            expect_ink(page, false, right, down + thick, top + down / 2, 2.5);
            EXPECT_EQ(page.at(left + 5 * unit, top), RGB(0, 0, 0));
            EXPECT_EQ(page.at(right, top + 5 * unit), RGB(by_width ? 64 : 0, 0, 0));
        }
    }
    DestroyWindow(owner);
    printPenWidth = std::to_string(0);
}

} // namespace
