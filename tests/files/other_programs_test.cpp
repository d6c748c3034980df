// What programs that others wrote make of our files. Each test needs its program and is skipped
// without it.
#include "evolve/grow.h"
#include "evolve/random.h"
#include "files/eps.h"
#include "tests/files/folder.h"
#include "tests/files/other_programs.h"
#include "tests/support/metafile_text.h"
#include "tests/support/trees.h"
#include "turtle/draw.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace pelmora;
using namespace pelmora_test;

// A line that was drawn, in turtle units, with its colour components of 0 to 255.
struct Stroke {
    double x0, y0, x1, y1;
    int red, green, blue;
};

// The program's own strokes, from the records of a metafile that holds `kFine` units a turtle unit.
std::vector<Stroke> own_strokes(const ExprNode* tree) {
    constexpr double kFine = 1000.0;
    HDC device = CreateEnhMetaFileA(nullptr, "own.emf", nullptr, nullptr);
    EXPECT_NE(device, nullptr);
    DrawContext ctx{};
    ctx.max_steps = kDefaultMaxSteps;
    draw_reset(&ctx);
    ctx.scale_x = ctx.scale_y = kFine;
    EXPECT_EQ(draw_run(device, &ctx, tree, nullptr), 1);
    HGDIOBJ pen = GetCurrentObject(device, OBJ_PEN);
    DeleteEnhMetaFile(CloseEnhMetaFile(device));
    DeleteObject(pen);

    std::vector<Stroke> strokes;
    double x = 0.0;
    double y = 0.0;
    unsigned color = 0;
    for (const std::string& record : metafile_lines(content_of("own.emf"))) {
        int to_x = 0;
        int to_y = 0;
        std::sscanf(record.c_str(), "CREATEPEN %*d width %*d color %x", &color);
        const bool line = std::sscanf(record.c_str(), "LINETO %d %d", &to_x, &to_y) == 2;
        if (line || std::sscanf(record.c_str(), "MOVETOEX %d %d", &to_x, &to_y) == 2) {
            if (line) {
                strokes.push_back({x, y, to_x / kFine, to_y / kFine, int(color & 0xFFU),
                                   int(color >> 8U & 0xFFU), int(color >> 16U & 0xFFU)});
            }
            x = to_x / kFine;
            y = to_y / kFine;
        }
    }
    return strokes;
}

// Makes the interpreter tell every stroke instead of painting it: "S", the pen (1: up), blue,
// green, red, and the end points in units of the page.
const char* const kTellStrokes = "/tell { =only ( ) print } def\n"
                                 "/stroke { gsave initmatrix (S ) print PENUP tell\n"
                                 "  currentrgbcolor 3 { 256 mul round cvi tell } repeat\n"
                                 "  { exch tell tell } { exch tell tell } {} {} pathforall\n"
                                 "  (\\n) print grestore newpath } def\n";

struct PageStroke {
    Stroke stroke;
    bool pen_up;
};

std::vector<PageStroke> page_strokes(const std::string& eps) {
    { std::ofstream("tell.ps") << kTellStrokes; }
    std::istringstream lines(output_of("gs -q -dNODISPLAY -dBATCH -dNOPAUSE tell.ps " + eps));
    std::vector<PageStroke> strokes;
    for (std::string line; std::getline(lines, line);) {
        PageStroke told{};
        Stroke& s = told.stroke;
        int up = 0;
        const int read = std::sscanf(line.c_str(), "S %d %d %d %d %lf %lf %lf %lf", &up, &s.blue,
                                     &s.green, &s.red, &s.x0, &s.y0, &s.x1, &s.y1);
        EXPECT_GE(read, 4) << line;
        if (read == 8) { // the last stroke of the document has no line
            told.pen_up = up == 1;
            strokes.push_back(told);
        }
    }
    return strokes;
}

void write_eps(const std::string& path, const ExprNode* tree) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    eps_write(file, tree, {-2, -2, 2, 2}, kDefaultMaxSteps);
    ASSERT_EQ(std::fclose(file), 0);
}

// A PostScript program counts its tests of the pen too, so it may be stopped where ours is not.
bool ends_below_both_limits(const ExprNode* tree) {
    DrawContext ctx{};
    ctx.max_steps = kDefaultMaxSteps / 2;
    RECT bounds{};
    draw_reset(&ctx);
    return draw_run(nullptr, &ctx, tree, &bounds) == 1 && ctx.repetitions < kDefaultMaxSteps / 2;
}

void expect_same_strokes(const std::vector<Stroke>& own, const std::vector<PageStroke>& page) {
    std::size_t next = 0;
    for (const PageStroke& told : page) {
        if (told.pen_up) {
            continue;
        }
        ASSERT_LT(next, own.size());
        const Stroke& mine = own[next++];
        constexpr double kNear = 0.05; // single precision, added up over the whole way
        const Stroke& s = told.stroke;
        ASSERT_TRUE(std::abs(mine.x0 - s.x0) < kNear && std::abs(mine.y0 - s.y0) < kNear &&
                    std::abs(mine.x1 - s.x1) < kNear && std::abs(mine.y1 - s.y1) < kNear)
            << "stroke " << next << ": " << mine.x1 << " " << mine.y1 << " is not " << s.x1 << " "
            << s.y1;
    }
    EXPECT_EQ(next, own.size());
}

TEST(OtherPrograms, APostScriptInterpreterDrawsTheSameStrokes) {
    if (!installed("gs")) {
        GTEST_SKIP() << "no Ghostscript";
    }
    rng_seed(0.5);
    std::size_t strokes = 0;
    int drawings = 0;
    for (int i = 0; i < 60; ++i) {
        const ExprTree tree(expr_random_tree(5, 4, 0.75, 0.1));
        if (!ends_below_both_limits(tree.get())) {
            continue;
        }
        SCOPED_TRACE(line_of(tree.get()).substr(0, 400));
        write_eps("strokes.eps", tree.get());
        const std::vector<Stroke> own = own_strokes(tree.get());
        expect_same_strokes(own, page_strokes("strokes.eps"));
        strokes += own.size();
        ++drawings;
    }
    EXPECT_GT(drawings, 20);
    EXPECT_GT(strokes, 1000U);
}

TEST(OtherPrograms, APostScriptInterpreterSeesTheSameColoursAndWhiteMoves) {
    if (!installed("gs")) {
        GTEST_SKIP() << "no Ghostscript";
    }
    const ExprTree tree =
        tree_of("( BLOCK ( FWD_1 ) ( RED_64 ) ( GRN_32 ) ( FWD_2 ) ( BLU_8 ) ( LEFT_90 ) ( FWD_3 )"
                " ( PEN_UP ) ( FWD_5 ) ( IF_PEN_UP ( PEN_DOWN ) ( FWD_100 ) ) ( FWD_1 ) )");
    write_eps("colours.eps", tree.get());
    const std::vector<PageStroke> page = page_strokes("colours.eps");
    const int wanted[][4] = {
        {0, 0, 0, 0}, {0, 64, 32, 0}, {0, 64, 32, 8}, {1, 256, 256, 256}, {0, 0, 0, 0}};
    ASSERT_EQ(page.size(), std::size(wanted));
    for (std::size_t i = 0; i < page.size(); ++i) {
        EXPECT_EQ(page[i].pen_up, wanted[i][0] == 1) << i;
        EXPECT_EQ(page[i].stroke.red, wanted[i][1]) << i;
        EXPECT_EQ(page[i].stroke.green, wanted[i][2]) << i;
        EXPECT_EQ(page[i].stroke.blue, wanted[i][3]) << i;
    }
    expect_same_strokes(own_strokes(tree.get()), page);
}

} // namespace
