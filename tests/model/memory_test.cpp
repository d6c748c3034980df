#include "model/expr.h"
#include "model/print.h"
#include "model/text.h"
#include "tests/support/failing_new.h"
#include "tests/support/trees.h"

#include <gtest/gtest.h>

namespace pelmora {
namespace {

using pelmora_test::FailingNew;
using pelmora_test::tree_of;

using FreeText = std::unique_ptr<char, void (*)(void*)>;

TEST(MemoryDeathTest, NodesArraysAndDepthAreFatal) {
    // More than any slab at hand has left.
    const auto nodes = [] {
        const FailingNew none(0);
        for (;;) {
            expr_new_node(TERMINAL);
        }
    };
    EXPECT_EXIT(nodes(), testing::ExitedWithCode(2), "^fatal - out of memory\n$");
    const auto array = [] {
        const FailingNew none(0);
        expr_new_children(40'000);
    };
    EXPECT_EXIT(array(), testing::ExitedWithCode(2), "^fatal - allocating 40000 children\n$");

    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += "( BLOCK ";
    }
    const ExprTree deep = tree_of(text + std::string(1000, ')'));
    const auto walk = [&] {
        const FailingNew none(0);
        expr_count_nodes(deep.get());
    };
    EXPECT_EXIT(walk(), testing::ExitedWithCode(2), "^fatal - out of memory\n$");

    ExprNode* copy = expr_copy_tree(deep.get());
    const FailingNew none(0);
    expr_free_tree(copy);
}

// Wherever memory runs out, what is returned is a whole program: a beginning of the full text, then
// the closing lines of the functions that were open.
TEST(Memory, TextOfProgramIsCutAtAChild) {
    std::string program = "( BLOCK";
    for (int i = 0; i < 60; ++i) {
        program += " ( REPEAT_2 ( FWD_1 ) ( BLOCK ( RED_1 ) ) )";
    }
    const ExprTree tree = tree_of(program + " )");
    const FreeText full(expr_to_text(tree.get()), std::free);
    std::size_t last_size = 0;
    std::size_t good = 0;
    for (bool complete = false; !complete; ++good) {
        char* cut = nullptr;
        {
            const FailingNew failing(good);
            cut = expr_to_text(tree.get());
        }
        const FreeText text(cut, std::free);
        ASSERT_EQ(text == nullptr, good < 2) << good; // the empty text, then the first line
        if (text == nullptr) {
            continue;
        }
        const std::string cut_text = text.get();
        const ExprTree read = tree_of(cut_text);
        EXPECT_GT(cut_text.size(), last_size);
        EXPECT_TRUE(pelmora_test::links_hold(read.get()));
        const FreeText again(expr_to_text(read.get()), std::free);
        EXPECT_EQ(cut_text, again.get());
        const std::size_t common = cut_text.find_last_not_of(" )\n") + 1;
        EXPECT_EQ(cut_text.compare(0, common, full.get(), common), 0) << cut_text;
        last_size = cut_text.size();
        complete = cut_text == full.get();
    }
    EXPECT_GT(good, 5U);
}

TEST(Memory, TextsAreJoinedAndCopied) {
    const struct {
        const char* first;
        const char* second;
        const char* joined;
    } cases[] = {
        {"ab", "c", "abc"}, {nullptr, "c", "c"}, {"ab", nullptr, "ab"}, {nullptr, nullptr, ""}};
    for (const auto& row : cases) {
        const FreeText joined(StrJoin(row.first, row.second), std::free);
        EXPECT_STREQ(joined.get(), row.joined);
        const FreeText copy(StrDup(joined.get()), std::free);
        EXPECT_STREQ(copy.get(), row.joined);
        EXPECT_NE(copy, joined);
    }
    EXPECT_EQ(StrDup(nullptr), nullptr);
    const FailingNew none(0);
    EXPECT_EQ(StrDup("a"), nullptr);
    EXPECT_EQ(StrJoin("a", "b"), nullptr);
}

} // namespace
} // namespace pelmora
