// The page that comes out of printing a turtle, as another program shows it.
#include "files/printing.h"
#include "platform/user.h"
#include "resources/resource.h"
#include "tests/files/other_programs.h"
#include "tests/files/owner.h"
#include "tests/support/trees.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>

namespace {

using namespace pelmora;
using namespace pelmora_test;

void choose_printing_to(user::Script& script, const std::string& path) {
    script.await("the print dialog", [] { return !user::system_dialog().empty(); });
    script.then("the path",
                [path = std::filesystem::absolute(path).string()] { user::print_to_file(path); });
}

// The paper and the margin of the printer that writes files, in its pixels.
struct Paper {
    int width, height, margin_x, margin_y;
};

Paper paper(HWND owner) {
    PRINTDLGA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.Flags = PD_RETURNDC;
    dialog.nCopies = 1;
    user::Script script([](const std::string& failure) { EXPECT_EQ(failure, ""); });
    choose_printing_to(script, "never.pdf");
    script.start();
    EXPECT_TRUE(PrintDlgA(&dialog));
    const Paper found{
        GetDeviceCaps(dialog.hDC, PHYSICALWIDTH), GetDeviceCaps(dialog.hDC, PHYSICALHEIGHT),
        GetDeviceCaps(dialog.hDC, PHYSICALOFFSETX), GetDeviceCaps(dialog.hDC, PHYSICALOFFSETY)};
    DeleteDC(dialog.hDC);
    return found;
}

// Prints with a pen of `width` device pixels; the page with so many dots an inch.
Pixels printed(HWND owner, const ExprNode* tree, int width, int dots) {
    std::remove("printed.pdf");
    DrawContext ctx{};
    ctx.max_steps = kDefaultMaxSteps;
    user::Script script([](const std::string& failure) { EXPECT_EQ(failure, ""); });
    script.await("the pen's width", [] { return user::find_window("Print Pensize") != nullptr; });
    script.then("type it", [=] {
        HWND dialog = user::find_window("Print Pensize");
        user::type(dialog, IDC_PEN_SIZE, std::to_string(width));
        user::press(dialog, "Return");
    });
    choose_printing_to(script, "printed.pdf");
    script.start();
    EXPECT_EQ(PrintTurtleTree(owner, &ctx, tree), 1);
    const std::string told = output_of("pdfinfo printed.pdf");
    EXPECT_NE(told.find("Pages:           1\n"), std::string::npos) << told;
    EXPECT_NE(told.find("Title:           Pelmora Print\n"), std::string::npos) << told;
    return page_pixels("printed.pdf", dots);
}

// How much of the way from one point to another, in pixels, has a colour, and the middle of that.
struct Stretch {
    double length, middle;
};

Stretch dark_stretch(const Pixels& page, double x, double y, double dx, double dy, int count) {
    constexpr double kWhite = 255.0; // of green: both colours have none
    Stretch dark{0, 0};
    for (int i = 0; i < count; ++i) {
        const double ink = 1.0 - (page.at(x + i * dx, y + i * dy) >> 8U & 0xFFU) / kWhite;
        dark = {dark.length + ink, dark.middle + ink * (i + 0.5)};
    }
    return {dark.length, dark.length > 0 ? dark.middle / dark.length : -1};
}

// A line along the top and one down from its right end, in pixels of the page.
struct RightAngle {
    double left, top, right, bottom;
};

void expect_lines(const Pixels& page, const RightAngle& lines, double thick) {
    const double x = (lines.left + lines.right) / 2;
    const Stretch across_top = dark_stretch(page, x, 0, 0, 1, page.height());
    EXPECT_NEAR(across_top.length, thick, 0.6);
    EXPECT_NEAR(across_top.middle, lines.top, 1.0);
    const double y = (lines.top + lines.bottom) / 2;
    const Stretch across_right = dark_stretch(page, 0, y, 1, 0, page.width());
    EXPECT_NEAR(across_right.length, thick, 0.6);
    EXPECT_NEAR(across_right.middle, lines.right, 1.0);
}

// They are rounded by half a pen.
void expect_ends(const Pixels& page, const RightAngle& lines, double thick) {
    const Stretch along_top = dark_stretch(page, 0, lines.top, 1, 0, page.width());
    EXPECT_NEAR(along_top.length, lines.right - lines.left + thick, 2.5);
    EXPECT_NEAR(along_top.middle, (lines.left + lines.right) / 2, 1.0);
    const Stretch along_right = dark_stretch(page, lines.right, 0, 0, 1, page.height());
    EXPECT_NEAR(along_right.length, lines.bottom - lines.top + thick, 2.5);
    EXPECT_NEAR(along_right.middle, (lines.top + lines.bottom) / 2, 1.0);
}

TEST(PrintedPage, HasItsScalePlaceAndPen) {
    if (!installed("pdftoppm") || !installed("pdfinfo")) {
        GTEST_SKIP() << "no program that reads PDF";
    }
    const Owner owner;
    // To the right along the top, and down at the right end, in other proportions than paper's.
    const ExprTree wide =
        tree_of("( BLOCK ( FWD_100 ) ( LEFT_90 ) ( RED_64 ) ( FWD_10 ) ( FWD_50 ) )");
    const ExprTree high = tree_of("( BLOCK ( FWD_10 ) ( LEFT_90 ) ( FWD_100 ) ( FWD_100 ) )");
    const Paper sheet = paper(owner.handle());
    ASSERT_GT(sheet.margin_x, 0);
    constexpr int kDots = 300;
    const struct {
        int pen;
        bool by_width;
    } cases[] = {{0, true}, {60, true}, {12, false}};
    for (const auto& [pen, by_width] : cases) {
        SCOPED_TRACE(std::to_string(pen) + (by_width ? " wide" : " high"));
        const Pixels page = printed(owner.handle(), (by_width ? wide : high).get(), pen, kDots);
        const double dot = 1.0 * page.width() / sheet.width; // pixels of a device pixel
        EXPECT_NEAR(sheet.height * dot, page.height(), 1.0);
        // The bounds of both drawings begin at -2 and end 2 beyond their ends.
        const double unit = dot * (by_width ? (sheet.width - 2 * sheet.margin_x) / 104.0
                                            : (sheet.height - 2 * sheet.margin_y) / 204.0);
        const double left = sheet.margin_x * dot + 2 * unit;
        const double top = sheet.margin_y * dot + 2 * unit;
        const RightAngle lines{left, top, left + (by_width ? 100 : 10) * unit,
                               top + (by_width ? 60 : 200) * unit};
        const double thick = std::max(pen * dot, 1.0); // renderers thicken what is thinner
        expect_lines(page, lines, thick);
        if (pen > 0) { // the ends of thin lines are blurred
            expect_ends(page, lines, thick);
            EXPECT_EQ(page.at(left + 5 * unit, top), RGB(0, 0, 0));
            EXPECT_EQ(page.at(lines.right, top + 5 * unit), RGB(by_width ? 64 : 0, 0, 0));
        }
    }
    printPenWidth = std::to_string(0);
}

} // namespace
