#include "model/parse.h"

#include "tests/support/trees.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace pelmora {
namespace {

using namespace pelmora_test;

struct Case {
    std::string text;
    std::string tree;
    std::string log;
};

void check(const std::vector<Case>& cases) {
    for (const Case& expected : cases) {
        testing::internal::CaptureStderr();
        const ExprTree tree(parse_expr(expected.text.c_str()));
        EXPECT_EQ(testing::internal::GetCapturedStderr(), expected.log) << expected.text;
        EXPECT_EQ(line_of(tree.get()), expected.tree) << expected.text;
        EXPECT_TRUE(links_hold(tree.get()));
    }
}

TEST(Parse, AcceptsEveryLayout) {
    const std::string pair = "( BLOCK ( FWD_1 ) ( LEFT_90 ) )";
    const std::string full = "( BLOCK" + times(63, " ( FWD_1 )") + " )";
    check({{"garbage ) ( FWD_10 ) ( more garbage", "( FWD_10 )", ""},
           {"(\r\n\tFWD_10\r\n)", "( FWD_10 )", ""},
           {"(BLOCK\n(FWD_1 )(LEFT_90\t))", pair, ""},
           {full, full, ""}});
    EXPECT_NE(tree_of("( BLOCK )")->children, nullptr);
}

TEST(Parse, ReportsFaultsOfOneNode) {
    const std::string unknown = "parse_sub_tree: UNKNOWN OP ";
    const std::string open = "ERROR: TERMINAL Not terminated! <";
    const std::string x126(126, 'X');
    const std::string y100(100, 'y');
    check({{"FWD_1 )", "none", "ERROR: PARSE EXPR has no opening paren!\n"},
           {"a ( ) b", "none", "ERROR: EMPTY EXPRESSION <( ) b>\n"},
           {"( \n" + times(9, "    "), "none",
            "ERROR: EMPTY EXPRESSION <( \n" + times(29, " ") + ">\n"},
           {"( " + x126 + " )", "none", unknown + "'" + x126.substr(0, 64) + "' @ < )>\n"},
           {"( X" + x126 + " )", "none", "ERROR: BAD SYMBOL < )>\n"},
           {"( X" + x126 + y100, "none", "ERROR: BAD SYMBOL <" + y100.substr(0, 32) + ">\n"},
           {"(FWD_10)", "none", unknown + "'FWD_10)' @ <>\n"},
           {"( fwd_1\v )", "none", unknown + "'fwd_1\v' @ < )>\n"},
           {"( \xe9 " + y100, "none", unknown + "'\xe9' @ < " + y100.substr(0, 63) + ">\n"},
           {"x ( FWD_1 FWD_2 )", "( FWD_1 )", open + "( FWD_1 FWD_2 )>\n"},
           {"( FWD_1 " + y100, "( FWD_1 )", open + "( FWD_1 " + y100.substr(0, 88) + ">\n"}});
}

TEST(Parse, ReportsFaultsOfBlocks) {
    const std::string failed = "parse_expr_block: UNSUCCESSFUL\n";
    const std::string odd = "ERROR: parse_expr_block: BAD CHILD EXPR <";
    const std::string bad = "ERROR: BAD CHILD - <";
    const std::string many = "ERROR: TOO MANY CHILDREN - <";
    const std::string forward = times(64, " ( FWD_1 )");
    const std::string start = forward.substr(0, 96) + "\n";
    check(
        {{"( BLOCK ( RED_1 ) ( NO ) )", "( BLOCK )",
          "parse_sub_tree: UNKNOWN OP 'NO' @ < ) )>\n" + bad +
              " ) )>\nEXPR:  ( RED_1 ) ( NO ) )\n" + failed},
         {"( BLOCK ( FWD_1 FWD_2 ) )", "( BLOCK )",
          "ERROR: TERMINAL Not terminated! <( FWD_1 FWD_2 ) )>\n" + odd + "FWD_2 ) )>\n" + failed},
         // A failed block is still a child, and its parent continues.
         {"( BLOCK ( BLOCK ( FWD_1 ) x", "( BLOCK )", times(2, odd + "x>\n" + failed)},
         {"( BLOCK ( REPEAT_2 ( ) ( FWD_2 ) )", "( BLOCK ( REPEAT_2 ) ( FWD_2 ) )",
          "ERROR: EMPTY EXPRESSION <( ) ( FWD_2 ) )>\n" + bad +
              ") ( FWD_2 ) )>\nEXPR:  ( ) ( FWD_2 ) )\n"},
         // After 64 children the closing parenthesis must follow without a blank.
         {"( BLOCK" + forward + " )", "( BLOCK )", failed + many + " )>\nEXPR: " + start},
         {"( BLOCK" + forward + ") )", "( BLOCK" + forward + " )", many + " )>\nEXPR: " + start}});
}

TEST(Parse, MalformedTextEndsInTime) {
    constexpr int kDepth = 200'000;
    testing::internal::CaptureStderr();
    const ExprTree open(parse_expr(times(kDepth, "( BLOCK ( FWD_1 ) ").c_str()));
    EXPECT_EQ(parse_expr(times(1000, std::string(100'000, ')')).c_str()), nullptr);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(line_of(open.get()), "( BLOCK )");
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), kMaxParseFaults + 1); // not 2 * kDepth
}

} // namespace
} // namespace pelmora
