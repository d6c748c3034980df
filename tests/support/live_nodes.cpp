// Checks after every test that it left no live program nodes. The leak checker cannot: nodes live
// in slabs.
#include "model/expr.h"

#include <gtest/gtest.h>

namespace {

class LiveNodes : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { start_ = pelmora::expr_live(); }

    void OnTestEnd(const testing::TestInfo& info) override {
        const pelmora::ExprLive end = pelmora::expr_live();
        EXPECT_EQ(end.nodes, start_.nodes) << "nodes left behind by " << info.name();
        EXPECT_EQ(end.arrays, start_.arrays) << "children arrays left behind by " << info.name();
    }

    pelmora::ExprLive start_{};
};

// May throw: the process ends then. NOLINTNEXTLINE(cert-err58-cpp)
[[maybe_unused]] const bool listening = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new LiveNodes);
    return true;
}();

} // namespace
