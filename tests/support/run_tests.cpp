#include "tests/support/run_tests.h"

#include "model/expr.h"

#include <gtest/gtest.h>

namespace {

// Slabs hide a forgotten node from the sanitizers, so every test is asked for it.
class LiveNodes : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { start_ = pelmora::expr_live(); }

    void OnTestEnd(const testing::TestInfo& info) override {
        const pelmora::ExprLive end = pelmora::expr_live();
        EXPECT_EQ(end.nodes, start_.nodes) << "nodes left behind by " << info.name();
        EXPECT_EQ(end.arrays, start_.arrays) << "children arrays left behind by " << info.name();
    }

    pelmora::ExprLive start_{};
};

} // namespace

namespace pelmora_test {

int run_tests(int* argc, char** argv) {
    testing::InitGoogleTest(argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new LiveNodes);
    return RUN_ALL_TESTS();
}

} // namespace pelmora_test
