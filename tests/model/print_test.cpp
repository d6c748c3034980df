#include "model/print.h"

#include "model/text.h"
#include "tests/support/trees.h"

#include <gtest/gtest.h>
#include <random>

namespace pelmora {
namespace {

using namespace pelmora_test;

std::string text_of(const ExprNode* root) {
    const OwnedText text(expr_to_text(root));
    return text == nullptr ? "none" : text.get();
}

TEST(Print, ThreeLayouts) {
    const ExprTree tree = tree_of("( REPEAT_5 ( BLOCK ( FWD_10 ) ( IF_PEN_UP ) ) )");
    EXPECT_EQ(text_of(tree.get()), "( REPEAT_5\n   ( BLOCK\n      ( FWD_10 )\n"
                                   "      ( IF_PEN_UP\n      )\n   )\n)\n");
    EXPECT_EQ(written(expr_write, tree.get()),
              "( REPEAT_5\r\n    ( BLOCK\r\n        ( FWD_10 )\r\n"
              "        ( IF_PEN_UP\r\n        )\r\n    )\r\n)\r\n");
    EXPECT_EQ(written(expr_write_line, tree.get()),
              " ( REPEAT_5  ( BLOCK  ( FWD_10 )  ( IF_PEN_UP  )  )  ) ");
    const ExprTree nameless(expr_new_node(TERMINAL));
    EXPECT_EQ(written(expr_write_line, nameless.get()), " ( UNKNOWN[0] ) ");
    EXPECT_EQ(text_of(nullptr), "");
}

ExprNode* random_tree(std::mt19937& random, int depth) {
    const bool function = depth > 0 && random() % 3 != 0;
    auto* node = expr_new_node(function ? FUNCTION : TERMINAL);
    node->op = static_cast<OpCode>(function ? 47 + random() % 9 : 1 + random() % 46);
    if (function) {
        node->count = static_cast<std::int16_t>(random() % 5);
        node->children = expr_new_children(node->count);
        for (int i = 0; i < node->count; ++i) {
            expr_place(node->children + i, random_tree(random, depth - 1));
        }
    }
    return node;
}

TEST(Print, EveryLayoutReadsBack) {
    std::mt19937 random(20240607);
    for (int i = 0; i < 10'000; ++i) {
        const ExprTree tree(random_tree(random, i % 8));
        const std::string expected = line_of(tree.get());
        for (const std::string& text : {text_of(tree.get()), written(expr_write, tree.get()),
                                        written(expr_write_line, tree.get())}) {
            ASSERT_EQ(line_of(tree_of(text).get()), expected);
        }
    }
}

} // namespace
} // namespace pelmora
