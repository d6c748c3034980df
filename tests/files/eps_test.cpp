// The PostScript document; tests/agreement covers what all documents share.
#include "files/eps.h"

#include "tests/support/trees.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <string>

namespace {

using namespace pelmora;
using namespace pelmora_test;

// Checks that every line ends with CR LF, and returns the text with "\n".
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

TEST(Eps, HasItsCreationDate) {
    const std::time_t start = std::time(nullptr);
    const std::string text = without_returns(written(
        [](const ExprNode* root, std::FILE* file) {
            eps_write(file, root, {-2, -2, 12, 2}, 777);
        },
        tree_of("( FWD_10 )").get()));
    const std::time_t end = std::time(nullptr);
    const auto has_date = [&text](std::time_t time) {
        std::string date = std::ctime(&time); // in English everywhere, the day without a zero
        std::replace(date.begin() + 8, date.begin() + 9, ' ', '0');
        return text.find("%%CreationDate: " + date) != std::string::npos;
    };
    std::time_t time = start;
    while (time < end && !has_date(time)) {
        ++time;
    }
    EXPECT_TRUE(has_date(time)) << text;
}

TEST(Eps, ABranchHasExactlyTwoChildren) {
    const auto branch = [](const std::string& first, const std::string& second) {
        return "   ispendown\n   {\n      " + first + "\n   }\n   {\n      " + second +
               "\n   }\n   ifelse\n";
    };
    const std::string two = branch("1 forward", "2 forward");
    EXPECT_EQ(body("( IF_PEN_DOWN )"), branch("noop", "noop"));
    EXPECT_EQ(body("( IF_PEN_DOWN ( FWD_1 ) )"), branch("1 forward", "noop"));
    EXPECT_EQ(body("( IF_PEN_DOWN ( FWD_1 ) ( FWD_2 ) )"), two);
    EXPECT_EQ(body("( IF_PEN_DOWN ( FWD_1 ) ( FWD_2 ) ( FWD_3 ) ( BLOCK ( FWD_5 ) ) )"), two);
    EXPECT_EQ(body(""), "   noop\n");
}

TEST(Eps, DeepProgramsNeedNoDeepStack) {
    constexpr int kLevels = 2000;
    const std::string text = body(times(kLevels, "( REPEAT_2 ") + times(kLevels, " )"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '{'), kLevels);
    EXPECT_NE(text.find("\n" + std::string(std::size_t{3} * kLevels, ' ') + "}\n"),
              std::string::npos);
}

} // namespace
