#include "evolve/breed.h"
#include "evolve/random.h"
#include "tests/support/failing_new.h"
#include "tests/support/trees.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <iterator>
#include <string>
#include <utility>

namespace pelmora_test {
namespace {

using namespace pelmora;

// A reference implementation of growth and breeding: recursive, on programs as lines of text, slow
// and without a bound on depth. It continues the random stream from its last 55 numbers, so one
// wrong or missing draw makes all later ones differ.
struct Reference {
    std::deque<double> last;

    Reference() { std::generate_n(std::back_inserter(last), 55, rng_draw); }
    double draw() {
        last.push_back(last[0] - last[31] + (last[0] < last[31] ? 1.0 : 0.0));
        last.pop_front();
        return last.back();
    }
    bool coin(double p) { return p >= 1.0 || draw() <= p; }
    int range(int low, int high) {
        return low >= high ? low : static_cast<int>(std::floor(draw() * (high - low + 1.0) + low));
    }

    std::string grow(const Population& pop, int depth) {
        const bool function = depth > 1 && coin(pop.PFNODE);
        const int op = function ? range(47, 55) : coin(pop.PCOLOR) ? range(26, 46) : range(1, 25);
        const int most = op < 47 || op > 53 ? 0 : op == 48 || op == 49 ? 2 : pop.MAX_CHILD;
        std::string line = "( ";
        line.append(op_name(op));
        for (int count = most == 0 ? 0 : range(2, most); count > 0; --count) {
            line.append(" ").append(grow(pop, depth - 1));
        }
        return line.append(" )");
    }

    ExprNode* cut(const ExprTree& tree, bool functions) {
        ExprNode* root = tree.get();
        return functions ? expr_nth_function(root, range(0, expr_count_functions(root) - 1))
                         : expr_nth_node(root, range(0, expr_count_nodes(root) - 1));
    }
    // Exchanges the contents of the nodes. Their slots are then wrong.
    void cross(const Population& pop, const ExprTree& a, const ExprTree& b) {
        const bool mutate = coin(pop.PMUTATE) && pop.MAX_DEPTH > 1;
        const ExprTree mutant = mutate ? tree_of(grow(pop, pop.MAX_DEPTH / 2)) : nullptr;
        const bool functions = coin(pop.PFNODE);
        ExprNode* in_a = cut(a, functions);
        ExprNode* in_b = cut(b, functions);
        std::swap(*in_a, *in_b);
        if (mutate) {
            std::swap(coin(0.5) ? *in_a : *in_b, *mutant);
        }
    }
    ExprTree parent(const Population& pop) {
        const double pick = draw() * pop.fitnessSum;
        int i = 0;
        for (double sum = pop.lifers[0].fitness; i < pop.size - 1 && sum < pick;) {
            sum += pop.lifers[++i].fitness;
        }
        return ExprTree(expr_copy_tree(pop.lifers[i].program));
    }
};

void expect_program(const Lifer& lifer, const ExprTree& reference) {
    ASSERT_TRUE(lifer.program->slot == &lifer.program && links_hold(lifer.program));
    ASSERT_EQ(line_of(lifer.program), line_of(reference.get()));
}

constexpr EvolveParams params(int size, int depth, int child, double cross, double mutate,
                              double fnode) {
    return {size, depth, child, cross, mutate, fnode, 0.1F, 0.5F, 0.3F, 0.2F, 0.1F, 0.1F, 0.05F};
}
constexpr EvolveParams kFirstUse = params(48, 9, 4, 0.8F, 0.2F, 0.75F);

void expect_generation(Reference& reference, const Population& cur, const Population& next) {
    for (std::int32_t i = 0; i < cur.size; i += 2) {
        const ExprTree a = reference.parent(cur);
        const ExprTree b = reference.parent(cur);
        if (reference.coin(cur.PCROSS)) {
            reference.cross(cur, a, b);
        }
        expect_program(next.lifers[i], b);
        expect_program(next.lifers[i + 1], a);
    }
}

TEST(Evolution, EveryProgramMatchesTheReferenceForFiftyGenerations) {
    for (const EvolveParams& p :
         {kFirstUse, params(8, 8, 1, 1, 1, 0.9), params(10, 3, 4, 0, 0.5, 1),
          params(8, 1, 4, 0.5, 1, 1), params(8, 5, 6, 1, 0.5, 0)}) {
        PopulationOwner cur(pop_create(p));
        PopulationOwner next(pop_create(p));
        Reference reference;
        pop_randomize(cur.get());
        for (std::int32_t i = 0; i < p.size; ++i) {
            expect_program(cur->lifers[i], tree_of(reference.grow(*cur, p.MAX_DEPTH)));
        }
        for (int generation = 0; generation < 50 && !testing::Test::HasFailure(); ++generation) {
            for (std::int32_t i = 0; i < p.size; ++i) {
                cur->lifers[i].score = (i + generation) * 7 % 5 * 0.1;
            }
            pop_statistics(cur.get());
            pop_free_programs(next.get());
            pop_breed(cur.get(), next.get());
            expect_generation(reference, *cur, *next);
            std::swap(cur, next);
            Lifer& lifer = cur->lifers[1];
            const ExprTree tree(expr_copy_tree(lifer.program));
            EXPECT_EQ(expr_mutate(lifer.program, 0, p.MAX_CHILD, p.PFNODE, p.PCOLOR), 0);
            EXPECT_EQ(expr_mutate(lifer.program, 3, p.MAX_CHILD, p.PFNODE, p.PCOLOR), 1);
            const ExprTree mutant = tree_of(reference.grow(*cur, 3));
            std::swap(*reference.cut(tree, reference.coin(p.PFNODE)), *mutant);
            expect_program(lifer, tree);
        }
    }
}

TEST(Evolution, NoParametersGrowWithoutBound) {
    for (int max_child : {2, 63, 32767, 2147483647}) {
        for (std::int64_t most : {std::int64_t{100}, kProgramNodeBudget}) {
            GrowthBudget budget{most};
            const ExprTree tree(expr_random_tree(2'000'000'000, max_child, 1.0, 0.1, &budget));
            EXPECT_EQ(budget.nodes, most - expr_count_nodes(tree.get()));
            EXPECT_TRUE(budget.nodes >= 0 && tree->slot == nullptr && links_hold(tree.get()));
        }
    }
}

TEST(Population, ScoresBecomeFitness) {
    PopulationOwner pop(pop_create(params(4, 1, 2, 0, 0, 0)));
    using Four = std::array<double, 4>;
    for (const auto& [scores, fitness] : {std::array{Four{2, 5, 3, 0}, Four{0.4, 1, 0.6, 0}},
                                          {Four{3, 1, 2, 1}, {1, 0, 0.5, 0}},
                                          {Four{7, 7, 7, 7}, {1, 1, 1, 1}},
                                          {Four{0, 1e-320, 0, 0}, {1, 1, 1, 1}}}) {
        for (std::size_t i = 0; i < 4; ++i) {
            pop->lifers[i].score = scores[i];
        }
        pop_statistics(pop.get());
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_DOUBLE_EQ(pop->lifers[i].fitness, fitness[i]);
        }
    }
    // The next pick equals the first running sum, on a wheel of 1.
    pop->lifers[0].fitness = Reference().draw();
    pop->lifers[3].fitness = 1.0 - pop->lifers[0].fitness;
    pop->lifers[1].fitness = pop->lifers[2].fitness = 0.0;
    pop_sum_fitness(pop.get());
    EXPECT_EQ(pop_select(pop.get()), 0);
}

TEST(Population, OutOfMemory) {
    const auto create = [](std::size_t good) {
        const FailingNew memory(good);
        return pop_create(kFirstUse);
    };
    EXPECT_EQ(create(0), nullptr);
    EXPECT_EXIT(create(1), testing::ExitedWithCode(2),
                "^fatal - out of memory allocating lifers\n$");
}

TEST(Random, StreamsOfASeed) {
    rng_restore({}); // as at the program's start: table entry 34 is 0 for the first stream
    std::array<double, 116> numbers{};
    for (auto number = numbers.begin(); number != numbers.end(); number += 58) {
        rng_seed(0.0);
        std::generate_n(number, 58, rng_draw);
    }
    // Computed in whole multiples of 1e-9; in doubles the rounding error grows to 1e-5.
    for (auto [draw, value] : {std::pair{1, 0.51282},
                               {54, 0.84720},
                               {55, 0.68296},
                               {58, 0.71015},
                               {58 + 54, 0.84720},
                               {58 + 58, 0.58718}}) {
        EXPECT_NEAR(numbers[static_cast<std::size_t>(draw - 1)], value, 5e-5) << draw;
    }
}

TEST(Params, RequestedNumbersAreClamped) {
    for (auto [requested, size] : {std::pair{-3, 8}, {9, 10}, {48, 48}, {2147483647, 32766}}) {
        EXPECT_EQ(params_population_size(requested), size);
    }
    EXPECT_TRUE(params_max_depth(-5) == 1 && params_max_child(64) == 63);
}

} // namespace
} // namespace pelmora_test
