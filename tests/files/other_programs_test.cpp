// What programs that others wrote make of our files. Each test needs its program and is skipped
// without it.
#include "evolve/grow.h"
#include "evolve/random.h"
#include "files/clipboard.h"
#include "files/eps.h"
#include "files/metafile.h"
#include "platform/user.h"
#include "tests/files/folder.h"
#include "tests/files/other_programs.h"
#include "tests/support/metafile_text.h"
#include "tests/support/trees.h"
#include "turtle/draw.h"

#include <gtest/gtest.h>

#include <algorithm>
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

// What a converter to scalable graphics makes of a metafile.
struct Vectors {
    double width = 0, height = 0;
    std::vector<Stroke> strokes; // from the picture's top left corner
};

Vectors converted(const std::string& name) {
    output_of("emf2svg-conv -i " + name + ".emf -o " + name + ".svg");
    std::istringstream lines(content_of(name + ".svg"));
    Vectors made;
    double left = 0;
    double top = 0;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t size = line.find(" width=");
        if (line.find("<svg ") == 0 && size != std::string::npos) {
            std::sscanf(line.c_str() + size, " width=\"%lf\" height=\"%lf\"", &made.width,
                        &made.height);
        }
        std::sscanf(line.c_str(), "<g transform=\"translate(%lf, %lf)\">", &left, &top);
        Stroke s{};
        unsigned color = 0;
        if (std::sscanf(line.c_str(), "<path d=\"M %lf,%lf L %lf,%lf \" stroke=\"#%x\"", &s.x0,
                        &s.y0, &s.x1, &s.y1, &color) == 5) {
            made.strokes.push_back({s.x0 + left, s.y0 + top, s.x1 + left, s.y1 + top,
                                    int(color >> 16U), int(color >> 8U & 0xFFU),
                                    int(color & 0xFFU)});
        } else {
            EXPECT_NE(line.find("<path"), 0U) << line;
        }
    }
    return made;
}

// Where the strokes reach, as RECT's sides.
struct Reach {
    double left, top, right, bottom;
};

Reach reach_of(const std::vector<Stroke>& strokes) {
    Reach reach{1e9, 1e9, -1e9, -1e9};
    for (const Stroke& s : strokes) {
        reach = {std::min({reach.left, s.x0, s.x1}), std::min({reach.top, s.y0, s.y1}),
                 std::max({reach.right, s.x0, s.x1}), std::max({reach.bottom, s.y0, s.y1})};
    }
    return reach;
}

// Turtle units to pixels, right and down.
struct Mapping {
    double x, y;
};

// The strokes of `own`, all of them, in their order and colours, filling the picture; `coarse` is
// how many pixels a whole logical unit is.
void expect_mapped(const Vectors& made, std::vector<Stroke> own, const Mapping& map,
                   double coarse) {
    for (Stroke& s : own) {
        s = {s.x0 * map.x, s.y0 * map.y, s.x1 * map.x, s.y1 * map.y, s.red, s.green, s.blue};
    }
    const Reach reach = reach_of(own);
    // A screen's millimetres are whole numbers, its pixels too.
    constexpr double kScreen = 0.004;
    const double near =
        0.6 * coarse + 1.0 + kScreen * std::max(reach.right - reach.left, reach.bottom - reach.top);
    EXPECT_NEAR(made.width, reach.right - reach.left, near);
    EXPECT_NEAR(made.height, reach.bottom - reach.top, near);
    ASSERT_EQ(made.strokes.size(), own.size());
    for (std::size_t i = 0; i < own.size(); ++i) {
        const Stroke& m = made.strokes[i];
        const Stroke& s = own[i];
        EXPECT_NEAR(m.x0, s.x0 - reach.left, near) << i;
        EXPECT_NEAR(m.y0, s.y0 - reach.top, near) << i;
        EXPECT_NEAR(m.x1, s.x1 - reach.left, near) << i;
        EXPECT_NEAR(m.y1, s.y1 - reach.top, near) << i;
        EXPECT_EQ(RGB(m.red, m.green, m.blue), RGB(s.red, s.green, s.blue)) << i;
    }
}

// Every stroke's middle has its colour in the picture that a renderer makes.
void expect_rendered(const std::string& name, const Vectors& made) {
    output_of("rsvg-convert -f pdf -o " + name + ".pdf " + name + ".svg");
    const Pixels picture = page_pixels(name + ".pdf", 288);
    const double scale = picture.width() / made.width;
    EXPECT_NEAR(picture.height(), made.height * scale, scale);
    for (const Stroke& s : made.strokes) {
        const double x = (s.x0 + s.x1) / 2 * scale;
        const double y = (s.y0 + s.y1) / 2 * scale;
        const double inside = 0.2 * scale; // of a line at the edge half is left
        const COLORREF seen = picture.at(std::clamp(x, inside, picture.width() - inside),
                                         std::clamp(y, inside, picture.height() - inside));
        EXPECT_EQ(seen, RGB(s.red, s.green, s.blue)) << x << "," << y;
    }
}

bool metafile_tools() {
    return installed("emf2svg-conv") && installed("rsvg-convert") && installed("pdftoppm");
}

// Three directions, four colours, a gap, and no symmetry.
const char* const kColourful =
    "( BLOCK ( FWD_100 ) ( RED_64 ) ( GRN_32 ) ( LEFT_90 ) ( FWD_50 ) ( BLU_64 ) ( BLU_64 )"
    " ( LEFT_45 ) ( FWD_10 ) ( PEN_UP ) ( FWD_50 ) ( PEN_DOWN ) ( RIGHT_90 ) ( FWD_100 )"
    " ( RED_64 ) ( RIGHT_10 ) ( FWD_3 ) )";

TEST(OtherPrograms, AConverterOfMetafilesSeesEveryStrokeInEveryMapMode) {
    if (!metafile_tools()) {
        GTEST_SKIP() << "no programs that read metafiles";
    }
    const ExprTree tree = tree_of(kColourful);
    DrawContext ctx{};
    ctx.max_steps = kDefaultMaxSteps;
    const std::vector<Stroke> own = own_strokes(tree.get());
    ASSERT_EQ(own.size(), 5U);
    constexpr double kInch = 96.0; // pixels
    const struct {
        const char* code;
        int mode;
        double unit; // pixels
    } cases[] = {{"LM", MM_LOMETRIC, kInch / 254},
                 {"HM", MM_HIMETRIC, kInch / 2540},
                 {"LE", MM_LOENGLISH, kInch / 100},
                 {"HE", MM_HIENGLISH, kInch / 1000},
                 {"TX", MM_TEXT, 1.0}};
    for (const auto& [code, mode, unit] : cases) {
        for (const int pen : {0, 1, 3}) {
            SCOPED_TRACE(std::string(code) + " with pen " + std::to_string(pen));
            metaMapCode = code;
            metaPenSize = std::to_string(pen);
            write_metafile("picture.emf", {&ctx, tree.get(), {}});
            const std::vector<std::string> records = metafile_lines(content_of("picture.emf"));
            EXPECT_EQ(records.at(1), "SETMAPMODE " + std::to_string(mode));
            EXPECT_NE(records.at(2).find(" width " + std::to_string(pen) + " "), std::string::npos);
            const Vectors made = converted("picture");
            // Only the pixels of a screen go downward, as their rows do.
            expect_mapped(made, own, {unit, mode == MM_TEXT ? unit : -unit}, unit);
            constexpr double kLarge = 40; // enough for lines a pixel wide to lie apart
            if (made.width > kLarge) {
                expect_rendered("picture", made);
            }
        }
    }
    metaMapCode = "LM";
    metaPenSize = std::to_string(1);
}

TEST(OtherPrograms, ACopiedPictureIsUprightAndSquare) {
    if (!metafile_tools()) {
        GTEST_SKIP() << "no programs that read metafiles";
    }
    const ExprTree tree = tree_of(kColourful);
    DrawContext ctx{};
    ctx.max_steps = kDefaultMaxSteps;
    ASSERT_TRUE(CopyTurtle(nullptr, {&ctx, tree.get(), {}}));
    const std::string bytes = user::copied("image/x-emf");
    ASSERT_EQ(metafile_lines(bytes).back(), "EOF");
    { std::ofstream("copied.emf", std::ios::binary) << bytes; }
    const RECT bounds = draw_measure(&ctx, tree.get());
    constexpr double kSide = 20320 * 96.0 / 254; // pixels
    const Mapping map{kSide / (bounds.right - bounds.left), -kSide / (bounds.bottom - bounds.top)};
    const Vectors made = converted("copied");
    expect_mapped(made, own_strokes(tree.get()), map, 1.0);
    EXPECT_EQ(metafile_lines(bytes).at(2), "CREATEPEN 1 width 0 color 0x000000");
}

} // namespace
