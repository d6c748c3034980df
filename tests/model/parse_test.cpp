#include "model/parse.h"

#include "model/print.h"
#include "tests/support/trees.h"

#include <gtest/gtest.h>

namespace pelmora {
namespace {

using pelmora_test::line_of;
using pelmora_test::links_hold;

std::string times(int n, const std::string& text) {
    std::string all;
    for (int i = 0; i < n; ++i) {
        all += text;
    }
    return all;
}

struct Case {
    std::string text;
    std::string tree;
    std::string log;
};

void check(const Case& expected) {
    testing::internal::CaptureStderr();
    const ExprTree tree(parse_expr(expected.text.c_str()));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), expected.log) << expected.text;
    EXPECT_EQ(line_of(tree.get()), expected.tree) << expected.text;
    if (tree != nullptr) {
        EXPECT_TRUE(links_hold(tree.get()));
        EXPECT_EQ(tree->slot, nullptr);
    }
}

TEST(Parse, AcceptsEveryLayout) {
    const std::string forward = "( FWD_10 )";
    const std::string pair = "( BLOCK ( FWD_1 ) ( LEFT_90 ) )";
    const std::string full = "( BLOCK" + times(63, " ( FWD_1 )") + " )";
    const Case cases[] = {
        {forward, forward, ""},
        {"garbage ) ( FWD_10 ) ( more garbage", forward, ""},
        {"(FWD_10\t)", forward, ""},
        {"(\r\n\tFWD_10\r\n)", forward, ""},
        {"( BLOCK )", "( BLOCK )", ""},
        {" ( BLOCK  ( FWD_1 )  ( LEFT_90 )  ) ", pair, ""},
        {"(BLOCK\n(FWD_1 )(LEFT_90 ))", pair, ""},
        {"( IF_PEN_UP\n   ( BLOCK\n   )\n)\n", "( IF_PEN_UP ( BLOCK ) )", ""},
        {full, full, ""},
    };
    for (const Case& good : cases) {
        check(good);
    }
    const ExprTree childless = pelmora_test::tree_of("( BLOCK )");
    EXPECT_NE(childless->children, nullptr);
}

TEST(Parse, ReportsFaultsOfOneNode) {
    const std::string no_paren = "ERROR: PARSE EXPR has no opening paren!\n";
    const std::string x126(126, 'X');
    const std::string x127(127, 'X');
    const std::string open_100 = "( FWD_1 " + std::string(100, 'y');
    const Case cases[] = {
        {"", "none", no_paren},
        {"FWD_1 )", "none", no_paren},
        {"a ( ) b", "none", "ERROR: EMPTY EXPRESSION <( ) b>\n"},
        {"( \n", "none", "ERROR: EMPTY EXPRESSION <( \n>\n"},
        {"(" + std::string(40, ' '), "none",
         "ERROR: EMPTY EXPRESSION <(" + std::string(31, ' ') + ">\n"},
        {"( " + x126 + " )", "none",
         "parse_sub_tree: UNKNOWN OP '" + std::string(64, 'X') + "' @ < )>\n"},
        {"( " + x127 + "YZ )", "none", "ERROR: BAD SYMBOL <YZ )>\n"},
        {"( " + x127 + std::string(40, 'Y'), "none",
         "ERROR: BAD SYMBOL <" + std::string(32, 'Y') + ">\n"},
        {"(FWD_10)", "none", "parse_sub_tree: UNKNOWN OP 'FWD_10)' @ <>\n"},
        {"( fwd_1 )", "none", "parse_sub_tree: UNKNOWN OP 'fwd_1' @ < )>\n"},
        {"( FWD_1\v )", "none", "parse_sub_tree: UNKNOWN OP 'FWD_1\v' @ < )>\n"},
        {"( \xe9\xff " + std::string(70, 'z'), "none",
         "parse_sub_tree: UNKNOWN OP '\xe9\xff' @ < " + std::string(63, 'z') + ">\n"},
        {"x ( FWD_1 FWD_2 )", "( FWD_1 )", "ERROR: TERMINAL Not terminated! <( FWD_1 FWD_2 )>\n"},
        {open_100, "( FWD_1 )",
         "ERROR: TERMINAL Not terminated! <" + open_100.substr(0, 96) + ">\n"},
        {"( FWD_1", "( FWD_1 )", "ERROR: TERMINAL Not terminated! <( FWD_1>\n"},
    };
    for (const Case& bad : cases) {
        check(bad);
    }
}

TEST(Parse, ReportsFaultsOfBlocks) {
    const std::string failed = "parse_expr_block: UNSUCCESSFUL\n";
    const std::string f64 = times(64, "( FWD_1 )");
    const std::string spaced = times(64, " ( FWD_1 )");
    const Case cases[] = {
        {"( BLOCK ( ) ( FWD_1 ) )", "( BLOCK )",
         "ERROR: EMPTY EXPRESSION <( ) ( FWD_1 ) )>\n"
         "ERROR: BAD CHILD - <) ( FWD_1 ) )>\nEXPR:  ( ) ( FWD_1 ) )\n"},
        {"( BLOCK ( RED_1 ) ( NO ) )", "( BLOCK )",
         "parse_sub_tree: UNKNOWN OP 'NO' @ < ) )>\n"
         "ERROR: BAD CHILD - < ) )>\nEXPR:  ( RED_1 ) ( NO ) )\n" +
             failed},
        {"( BLOCK ( FWD_1 FWD_2 ) )", "( BLOCK )",
         "ERROR: TERMINAL Not terminated! <( FWD_1 FWD_2 ) )>\n"
         "ERROR: parse_expr_block: BAD CHILD EXPR <FWD_2 ) )>\n" +
             failed},
        // The inner block fails, is a child all the same, and the outer one goes on behind it.
        {"( BLOCK ( REPEAT_2 ( FWD_1 ) x ) ( FWD_2 ) )", "( BLOCK )",
         "ERROR: parse_expr_block: BAD CHILD EXPR <x ) ( FWD_2 ) )>\n" + failed +
             "ERROR: parse_expr_block: BAD CHILD EXPR <x ) ( FWD_2 ) )>\n" + failed},
        {"( BLOCK ( REPEAT_2 ( ) ( FWD_2 ) )", "( BLOCK ( REPEAT_2 ) ( FWD_2 ) )",
         "ERROR: EMPTY EXPRESSION <( ) ( FWD_2 ) )>\n"
         "ERROR: BAD CHILD - <) ( FWD_2 ) )>\nEXPR:  ( ) ( FWD_2 ) )\n"},
        {"( BLOCK ( BLOCK", "( BLOCK )",
         times(2, "ERROR: parse_expr_block: BAD CHILD EXPR <>\n" + failed)},
        {"( BLOCK" + spaced + " )", "( BLOCK )",
         failed + "ERROR: TOO MANY CHILDREN - < )>\nEXPR: " + spaced.substr(0, 96) + "\n"},
        {"( BLOCK " + f64 + ") )", "( BLOCK" + spaced + " )",
         "ERROR: TOO MANY CHILDREN - < )>\nEXPR:  " + f64.substr(0, 95) + "\n"},
        {"( BLOCK " + times(63, "( FWD_1 )") + "( BLOCK ( )) )",
         "( BLOCK" + times(63, " ( FWD_1 )") + " ( BLOCK ) )",
         "ERROR: EMPTY EXPRESSION <( )) )>\nERROR: BAD CHILD - <)) )>\nEXPR:  ( )) )\n"
         "ERROR: TOO MANY CHILDREN - < )>\nEXPR:  " +
             f64.substr(0, 95) + "\n"},
    };
    for (const Case& bad : cases) {
        check(bad);
    }
}

TEST(Parse, MillionLevels) {
    constexpr int kDepth = 1'000'000;
    const std::string text = times(kDepth, " ( BLOCK ") + times(kDepth, " ) ");
    const ExprTree tree(parse_expr(text.c_str()));
    const ExprTree copy(expr_copy_tree(tree.get()));
    EXPECT_EQ(expr_count_nodes(copy.get()), kDepth);
    EXPECT_EQ(expr_nth_function(copy.get(), kDepth)->count, 0);

    std::FILE* file = std::tmpfile();
    ASSERT_NE(file, nullptr);
    expr_write_line(copy.get(), file);
    std::string written(text.size() + 1, '\0');
    std::rewind(file);
    written.resize(std::fread(written.data(), 1, written.size(), file));
    std::fclose(file);
    EXPECT_TRUE(written == text);
}

TEST(Parse, MalformedDeepTextEndsInTime) {
    constexpr int kDepth = 200'000;
    testing::internal::CaptureStderr();
    const ExprTree open(parse_expr(times(kDepth, "( BLOCK ( FWD_1 ) ").c_str()));
    const ExprTree none(parse_expr(times(1000, std::string(100'000, ')')).c_str()));
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(line_of(open.get()), "( BLOCK )");
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2 * kDepth + 1);
}

} // namespace
} // namespace pelmora
