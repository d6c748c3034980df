// The PostScript document.
#include "files/eps.h"

#include "tests/support/trees.h"

#include <algorithm>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <regex>
#include <string>

namespace {

using namespace pelmora;
using namespace pelmora_test;

std::string document(const ExprNode* tree, const RECT& bounds, std::int32_t max_steps) {
    char* data = nullptr;
    std::size_t size = 0;
    std::FILE* file = ::open_memstream(&data, &size);
    eps_write(file, tree, bounds, max_steps);
    std::fclose(file);
    std::string text(data, size);
    std::free(data);
    return text;
}

// The body, its lines ended by "\n" for legibility here.
std::string body(const std::string& program) {
    const ExprTree tree = program.empty() ? nullptr : tree_of(program);
    return std::regex_replace(written(eps_write_expr, tree.get()), std::regex("\r\n"), "\n");
}

TEST(Eps, TheWholeDocument) {
    const ExprTree tree = tree_of("( FWD_10 )");
    const std::string text = document(tree.get(), {-2, -2, 12, 2}, 777);
    const std::regex date("%%CreationDate: ((Sun|Mon|Tue|Wed|Thu|Fri|Sat) "
                          "(Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) [0-3][0-9] "
                          "[0-2][0-9]:[0-5][0-9]:[0-6][0-9] [0-9]{4})\r\n");
    std::smatch found;
    ASSERT_TRUE(std::regex_search(text, found, date)) << text;
    EXPECT_EQ(found[1].length(), 24);
    const std::string undated = std::regex_replace(text, date, "%%CreationDate: NOW\r\n");
    const std::string expected = R"(%!PS-Adobe-3.0 EPSF-3.0
%%BoundingBox: -2 -2 12 2
%%Title: Pelmora 3.5, https://pelmora.example
%%Creator: The Pelmora developers <pelmora@pelmora.example>
%%CreationDate: NOW
%%EndComments

%
% EPS function definitions
%
/STEPS 0 def
/MAXSTEPS 777 def
/chksteps { STEPS MAXSTEPS gt { exit } if } def
/incrstep { 1 STEPS add /STEPS exch def chksteps } def
/forward { dup 0 rlineto 0 translate
	currentpoint
	stroke
	moveto
	incrstep } bind def
/right { rotate incrstep } bind def
/left { neg rotate incrstep } bind def
/penup { 1 setgray /PENUP 1 def incrstep } def
/pendown { 0 setgray /PENUP 0 def incrstep } def
/PENRED 0 def
/PENGRN 0 def
/PENBLU 0 def
/setpen { PENRED 256.0 div PENGRN 256.0 div PENBLU 256.0 div setrgbcolor } def
/addred { PENRED add 256 mod /PENRED exch def setpen incrstep } def
/addgrn { PENGRN add 256 mod /PENGRN exch def setpen incrstep } def
/addblu { PENBLU add 256 mod /PENBLU exch def setpen incrstep } def
/ispenup { 1 PENUP eq incrstep } def
/ispendown { 1 PENUP ne incrstep } def
/dot { } def
/Tsave { } def
/Trestore { } def
/pushmark { } def
/popmark { } def
%
% End of EPS function definitions
%

%
% Define the logo turtle's program in PostScript
%
/logoexpr {
   0 0 moveto
   10 forward
} def

%
% End of logo turtle's program definition
%

%
% Begin Suffix
%

0.1 setlinewidth
pendown
logoexpr
stroke
%
% End of logo turtle EPS file
%
)";
    EXPECT_EQ(undated, std::regex_replace(expected, std::regex("\n"), "\r\n"));
}

TEST(Eps, BlocksRepeatsAndBranches) {
    EXPECT_EQ(body("( BLOCK ( FWD_10 ) ( REPEAT_3 ( RIGHT_90 ) ( FWD_5 ) )"
                   " ( IF_PEN_UP ( PEN_DOWN ) ( RED_8 ) ) )"),
              "   \n      10 forward\n      3\n      {\n         90 right\n         5 forward\n"
              "      }\n      repeat\n      ispenup\n      {\n         pendown\n      }\n      {\n"
              "         8 addred\n      }\n      ifelse\n   \n");
    EXPECT_EQ(body("( REPEAT_100 ( LEFT_15 ) ( GRN_16 ) ( BLU_64 ) ( PEN_UP ) )"),
              "   100\n   {\n      15 left\n      16 addgrn\n      64 addblu\n      penup\n   }\n"
              "   repeat\n");
    EXPECT_EQ(body("( REPEAT_50 )"), "   50\n   {\n   }\n   repeat\n");
}

TEST(Eps, ABranchHasJustTwoChildren) {
    const std::string none =
        "   ispendown\n   {\n      noop\n   }\n   {\n      noop\n   }\n   ifelse\n";
    const std::string one =
        "   ispendown\n   {\n      1 forward\n   }\n   {\n      noop\n   }\n   ifelse\n";
    const std::string two =
        "   ispendown\n   {\n      1 forward\n   }\n   {\n      2 forward\n   }\n   ifelse\n";
    EXPECT_EQ(body("( IF_PEN_DOWN )"), none);
    EXPECT_EQ(body("( IF_PEN_DOWN ( FWD_1 ) )"), one);
    EXPECT_EQ(body("( IF_PEN_DOWN ( FWD_1 ) ( FWD_2 ) )"), two);
    EXPECT_EQ(body("( IF_PEN_DOWN ( FWD_1 ) ( FWD_2 ) ( FWD_3 ) ( BLOCK ( FWD_5 ) ) )"), two);
    EXPECT_EQ(body(""), "   noop\n");
}

TEST(Eps, EveryTerminalHasItsProcedure) {
    const char* const procedures[] = {"forward", "right", "left", "addred", "addgrn", "addblu"};
    const char* const names[] = {"FWD", "RIGHT", "LEFT", "RED", "GRN", "BLU"};
    for (const Instruction& instruction : kInstructions) {
        const std::string name = instruction.name;
        const auto place = name.find('_');
        for (int i = 0; i < 6; ++i) {
            if (name.substr(0, place) == names[i]) {
                EXPECT_EQ(body("( " + name + " )"),
                          "   " + name.substr(place + 1) + " " + procedures[i] + "\n");
            }
        }
    }
}

TEST(Eps, DeepProgramsNeedNoDeepStack) {
    constexpr int kLevels = 2000;
    const std::string text = body(times(kLevels, "( REPEAT_2 ") + times(kLevels, " )"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '{'), kLevels);
    EXPECT_NE(text.find("\n" + std::string(3 * kLevels, ' ') + "}\n"), std::string::npos);
}

} // namespace
