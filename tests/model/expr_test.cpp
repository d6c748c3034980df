#include "model/expr.h"

#include "model/walk.h"
#include "tests/support/trees.h"

#include <gtest/gtest.h>
#include <set>

namespace pelmora {
namespace {

using pelmora_test::line_of;
using pelmora_test::links_hold;
using pelmora_test::tree_of;

constexpr const char* kProgram = "( BLOCK ( FWD_1 ) ( REPEAT_2 ( BLOCK ) ( RED_8 ) ) ( LEFT_90 ) )";

TEST(Expr, CountsAndPicks) {
    const ExprTree tree = tree_of(kProgram);
    EXPECT_EQ(expr_count_nodes(tree.get()), 6);
    EXPECT_EQ(expr_count_functions(tree.get()), 3);
    const OpCode nodes[] = {BLOCK, FWD_1, REPEAT_2, BLOCK, RED_8, LEFT_90, LEFT_90, LEFT_90};
    const OpCode functions[] = {BLOCK, REPEAT_2, BLOCK, LEFT_90, LEFT_90};
    int n = 0;
    for (const OpCode op : nodes) {
        EXPECT_EQ(expr_nth_node(tree.get(), n)->op, op) << n;
        ++n;
    }
    n = 0;
    for (const OpCode op : functions) {
        EXPECT_EQ(expr_nth_function(tree.get(), n)->op, op) << n;
        ++n;
    }
    const ExprTree terminal = tree_of("( FWD_1 )");
    EXPECT_EQ(expr_count_functions(terminal.get()), 0);
    EXPECT_EQ(expr_nth_function(terminal.get(), 0), terminal.get());
}

TEST(Expr, CopySharesNothing) {
    ExprTree tree = tree_of(kProgram);
    ExprNode* cell = nullptr;
    expr_place(&cell, tree.get());
    const ExprTree copy(expr_copy_tree(tree.get()));
    EXPECT_EQ(copy->slot, nullptr);
    EXPECT_TRUE(links_hold(copy.get()));

    std::set<const void*> parts;
    for (const ExprNode* root : {tree.get(), copy.get()}) {
        expr_walk_preorder(root, [&](const ExprNode* node) {
            EXPECT_TRUE(parts.insert(node).second);
            EXPECT_TRUE(node->children == nullptr || parts.insert(node->children).second);
            return true;
        });
    }
    EXPECT_TRUE(links_hold(tree.get()));
    EXPECT_EQ(line_of(tree.get()), kProgram);
    tree.reset();
    EXPECT_EQ(line_of(copy.get()), kProgram);
}

TEST(Expr, SingleNodes) {
    const ExprTree tree = tree_of(kProgram);
    ExprNode* copy = expr_copy_node(tree.get());
    EXPECT_EQ(copy->kind, FUNCTION);
    EXPECT_EQ(copy->op, BLOCK);
    EXPECT_EQ(copy->count, 3);
    EXPECT_EQ(copy->children, nullptr);
    EXPECT_TRUE(expr_free_node(copy));
    EXPECT_TRUE(expr_free_node(nullptr));
    expr_free_tree(nullptr);

    for (const int count : {0, 1, 5000, 32767, 100'000}) {
        ExprNode* node = expr_new_node(FUNCTION);
        EXPECT_EQ(node->op, NO_OP);
        EXPECT_EQ(node->count, 0);
        EXPECT_EQ(node->slot, nullptr);
        node->children = expr_new_children(count);
        EXPECT_NE(node->children, nullptr);
        EXPECT_EQ(std::count(node->children, node->children + count, nullptr), count);
        expr_free_node(node);
    }
}

TEST(Expr, WalksKeepTheirOrderAndStop) {
    const ExprTree tree = tree_of("( BLOCK ( REPEAT_2 ( FWD_1 ) ( FWD_2 ) ) ( FWD_3 ) )");
    const OpCode before[] = {BLOCK, REPEAT_2, FWD_1, FWD_2, FWD_3};
    const OpCode after[] = {FWD_1, FWD_2, REPEAT_2, FWD_3, BLOCK};
    for (std::size_t visits = 1; visits <= 6; ++visits) {
        std::vector<OpCode> seen;
        const auto visit = [&](const ExprNode* node) {
            seen.push_back(node->op);
            return seen.size() < visits;
        };
        const std::size_t expected = std::min<std::size_t>(visits, 5);
        EXPECT_EQ(expr_walk_preorder(tree.get(), visit), visits > 5);
        EXPECT_EQ(seen, std::vector<OpCode>(before, before + expected));
        seen.clear();
        EXPECT_EQ(expr_walk_postorder(tree.get(), visit), visits > 5);
        EXPECT_EQ(seen, std::vector<OpCode>(after, after + expected));
    }
    ExprNode* copy = expr_copy_tree(tree.get());
    EXPECT_TRUE(expr_walk_postorder(copy, expr_free_node));
}

TEST(Expr, WalksKnowTheirPlaceAndLeaveParentsEarly) {
    const ExprTree tree = tree_of("( BLOCK ( FWD_1 ) ( REPEAT_2 ( RED_1 ) ( BLU_1 ) ) ( FWD_3 ) )");
    const auto walk = [&](OpCode out_at_enter, OpCode out_at_leave) {
        std::string log;
        const ExprNode* root = tree.get();
        using Cell = const ExprNode* const*;
        EXPECT_TRUE(expr_walk(
            Cell{&root},
            [&](Cell cell, const WalkPlace& at) {
                EXPECT_EQ(at.parent == nullptr, at.depth == 0);
                EXPECT_TRUE(at.parent == nullptr || at.parent->children[at.index] == *cell);
                log.append(std::to_string(at.depth)).append(std::to_string(at.index)).append(" ");
                return (*cell)->op == out_at_enter ? Walk::out : Walk::on;
            },
            [&](Cell cell, const WalkPlace& at) {
                EXPECT_TRUE(at.parent == nullptr || at.parent->children[at.index] == *cell);
                log.append("/").append(std::to_string(at.depth)).append(" ");
                return (*cell)->op == out_at_leave ? Walk::out : Walk::on;
            }));
        return log;
    };
    EXPECT_EQ(walk(NO_OP, NO_OP), "00 10 /1 11 20 /2 21 /2 /1 12 /1 /0 ");
    EXPECT_EQ(walk(RED_1, NO_OP), "00 10 /1 11 20 /1 12 /1 /0 ");
    EXPECT_EQ(walk(NO_OP, RED_1), "00 10 /1 11 20 /2 /1 12 /1 /0 ");
    EXPECT_EQ(walk(NO_OP, REPEAT_2), "00 10 /1 11 20 /2 21 /2 /1 /0 ");
    EXPECT_EQ(walk(BLOCK, NO_OP), "00 ");
}

// Slabs come and go in every order; what is still live must not move or change.
TEST(Expr, ManyTreesReleasedOutOfOrder) {
    std::string text = "( BLOCK";
    for (int i = 0; i < 63; ++i) {
        text += " ( REPEAT_2 ( FWD_1 ) ( IF_PEN_UP ( RED_1 ) ( BLU_1 ) ) )";
    }
    text += " )";
    std::vector<ExprTree> trees;
    trees.push_back(tree_of(text));
    for (int i = 1; i < 300; ++i) {
        trees.emplace_back(expr_copy_tree(trees.back().get()));
    }
    for (std::size_t step : {7, 3, 2}) {
        for (std::size_t i = 0; i < trees.size(); i += step) {
            trees[i].reset();
        }
        for (std::size_t i = 1; i < trees.size(); i += step * 2) {
            trees[i] = tree_of(text);
        }
        for (const ExprTree& tree : trees) {
            ASSERT_TRUE(tree == nullptr || line_of(tree.get()) == text);
        }
    }
}

} // namespace
} // namespace pelmora
