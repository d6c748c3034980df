// The PostScript document.
#include "files/eps.h"

#include "tests/support/trees.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

#include <cstdio>
#include <ctime>
#include <string>

namespace {

using namespace pelmora;
using namespace pelmora_test;

// A text whose lines end with CR LF, and all of them, with "\n" for legibility here.
std::string without_returns(const std::string& text) {
    std::string legible;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) {
            return "a line of " + text + " ends with LF alone";
        }
        if (text[i] != '\r') {
            legible += text[i];
        }
    }
    return legible;
}

std::string body(const std::string& program) {
    const ExprTree tree = program.empty() ? nullptr : tree_of(program);
    return without_returns(written(eps_write_expr, tree.get()));
}

// A local date such as "Sun Nov 08 09:05:03 2026".
std::string date_of(std::time_t time) {
    std::array<char, 64> text{};
    std::strftime(text.data(), text.size(), "%a %b %d %H:%M:%S %Y", std::localtime(&time));
    return text.data();
}

TEST(Eps, TheWholeDocument) {
    const ExprTree tree = tree_of("( FWD_10 )");
    std::time_t time = std::time(nullptr);
    std::string text = written(
        [](const ExprNode* root, std::FILE* file) {
            eps_write(file, root, {-2, -2, 12, 2}, 777);
        },
        tree.get());
    const std::time_t end = std::time(nullptr);
    const std::size_t at = text.find("%%CreationDate: ") + 16;
    const std::string date = text.substr(at, text.find("\r\n", at) - at);
    while (time < end && date_of(time) != date) {
        ++time;
    }
    EXPECT_EQ(date, date_of(time));
    text.replace(at, date.size(), "NOW");
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
    EXPECT_EQ(without_returns(text), expected);
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
