#include "model/expr.h"

#include "tests/support/trees.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace pelmora {
namespace {

using namespace pelmora_test;

constexpr const char* kProgram = "( BLOCK ( FWD_1 ) ( REPEAT_2 ( BLOCK ) ( RED_8 ) ) ( LEFT_90 ) )";

TEST(Expr, CountsAndPicks) {
    const ExprTree tree = tree_of(kProgram);
    EXPECT_EQ(expr_count_nodes(tree.get()), 6);
    EXPECT_EQ(expr_count_functions(tree.get()), 3);
    const OpCode nodes[] = {BLOCK, FWD_1, REPEAT_2, BLOCK, RED_8, LEFT_90, LEFT_90, LEFT_90};
    const OpCode functions[] = {BLOCK, REPEAT_2, BLOCK, LEFT_90, LEFT_90};
    for (int n = 0; n < 8; ++n) {
        EXPECT_EQ(expr_nth_node(tree.get(), n)->op, nodes[n]) << n;
        EXPECT_EQ(expr_nth_function(tree.get(), n)->op, functions[std::min(n, 4)]) << n;
    }
}

TEST(Expr, ArraysOfEverySizeAreEmpty) {
    std::vector<ExprNode*> nodes;
    for (int i = 0; i < 60; ++i) {
        const int count = std::vector{0, 1, 5000, 32767, 100'000}[static_cast<std::size_t>(i % 5)];
        nodes.push_back(expr_new_node(FUNCTION));
        ExprNode** children = nodes.back()->children = expr_new_children(count);
        ASSERT_NE(children, nullptr);
        EXPECT_EQ(std::count(children, children + count, nullptr), count);
    }
    EXPECT_TRUE(std::all_of(nodes.begin(), nodes.end(), expr_free_node));
    EXPECT_TRUE(expr_free_node(nullptr));
}

// Slabs are allocated and freed in every order; live nodes must not move or change.
TEST(Expr, ManyTreesReleasedOutOfOrder) {
    const std::string text = "( BLOCK" + times(60, std::string(" ") + kProgram) + " )";
    std::vector<ExprTree> trees(300);
    for (const std::size_t step : {1, 7, 3, 2}) {
        for (std::size_t i = 0; i < trees.size(); i += step) {
            trees[i].reset();
            trees[i / 2] = tree_of(text);
        }
        for (const ExprTree& tree : trees) {
            ASSERT_TRUE(tree == nullptr || line_of(tree.get()) == text);
        }
    }
}

} // namespace
} // namespace pelmora
