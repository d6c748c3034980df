#include "model/print.h"

#include "model/text.h"
#include "tests/support/trees.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace pelmora
