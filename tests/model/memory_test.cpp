#include "model/node_store.h"
#include "model/print.h"
#include "model/text.h"
#include "tests/support/failing_new.h"
#include "tests/support/trees.h"

#include <cstring>
#include <gtest/gtest.h>
#include <vector>

namespace pelmora {
namespace {

using namespace pelmora_test;

TEST(MemoryDeathTest, NodesArraysAndDepthAreFatal) {
    const ExprTree deep = tree_of(times(1000, "( BLOCK ") + times(1000, ")"));
    ExprNode* copy = expr_copy_tree(deep.get());
    const auto without_memory = [](const auto& work) {
        const FailingNew none(0);
        for (;;) { // the current slab may have memory left
            work();
        }
    };
    const testing::ExitedWithCode fatal(2);
    EXPECT_EXIT(without_memory([] { expr_new_node(TERMINAL); }), fatal,
                "^fatal - out of memory\r?\n$");
    EXPECT_EXIT(without_memory([] { expr_new_children(40'000); }), fatal,
                "^fatal - allocating 40000 children\r?\n$");
    EXPECT_EXIT(without_memory([&] { expr_count_nodes(deep.get()); }), fatal,
                "^fatal - out of memory\r?\n$");
    expr_free_tree(copy);
}

// Wherever memory runs out, the result is a whole program: a prefix of the full text, then the
// closing lines of the functions that were open.
TEST(Memory, TextOfProgramIsCutAtAChild) {
    const std::string child = "( REPEAT_2 ( FWD_1 ) ( BLOCK ( RED_1 ) ) ) ";
    const ExprTree tree = tree_of("( BLOCK " + times(60, child) + ")");
    const std::string full = OwnedText(expr_to_text(tree.get())).get();
    std::string cut;
    for (std::size_t good = 0; cut != full; ++good) {
        OwnedText text;
        {
            const FailingNew failing(good);
            text.reset(expr_to_text(tree.get()));
        }
        ASSERT_EQ(text == nullptr, good < 2) << good; // the empty text, then the first line
        if (text != nullptr) {
            ASSERT_GT(std::strlen(text.get()), cut.size());
            cut = text.get();
            const OwnedText again(expr_to_text(tree_of(cut).get()));
            EXPECT_EQ(cut, again.get());
            const std::size_t common = cut.find_last_not_of(" )\n") + 1;
            EXPECT_EQ(cut.compare(0, common, full, 0, common), 0) << cut;
        }
    }
}

#ifndef PELMORA_SANITIZE // which allocates every node singly

// What can be had without memory from the system.
std::size_t kept_bytes() {
    const FailingNew none(0);
    std::vector<ExprNode*> nodes;
    while (void* memory = node_store_new_node()) {
        nodes.push_back(static_cast<ExprNode*>(memory));
    }
    NodeReturn store;
    for (ExprNode* node : nodes) {
        store.node(node);
    }
    return nodes.size() * sizeof(ExprNode);
}

// A generation's memory is there for the next one, and goes with the last window.
TEST(Memory, AsMuchIsKeptAsIsInUse) {
    const std::string row = "( BLOCK " + times(60, "( FWD_1 ) ") + ") ";
    const ExprTree program = tree_of("( BLOCK " + times(60, row) + ")");
    const auto generation = [&] { // 33 MiB
        std::vector<ExprTree> trees(300);
        for (ExprTree& tree : trees) {
            tree.reset(expr_copy_tree(program.get()));
        }
        return trees;
    };
    std::vector<ExprTree> current = generation();
    std::vector<ExprTree> next = generation();
    next.clear();
    EXPECT_GE(kept_bytes(), std::size_t{33} << 20U);
    current.clear();
    EXPECT_LE(kept_bytes(), std::size_t{18} << 20U);
}

#endif

TEST(Memory, TextsAreJoinedAndCopied) {
    EXPECT_STREQ(OwnedText(StrJoin("ab", "c")).get(), "abc");
    EXPECT_STREQ(OwnedText(StrJoin(nullptr, "c")).get(), "c");
    EXPECT_STREQ(OwnedText(StrJoin("ab", nullptr)).get(), "ab");
    EXPECT_STREQ(OwnedText(StrJoin(nullptr, nullptr)).get(), "");
    EXPECT_STREQ(OwnedText(StrDup("abc")).get(), "abc");
    EXPECT_EQ(StrDup(nullptr), nullptr);
    const FailingNew none(0);
    EXPECT_EQ(StrDup("a"), nullptr);
    EXPECT_EQ(StrJoin("a", "b"), nullptr);
}

} // namespace
} // namespace pelmora
