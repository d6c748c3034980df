// The breeding commands on a real window.
#include "evolve/random.h"
#include "resources/resource.h"
#include "tests/support/trees.h"
#include "tests/ui/program.h"
#include "ui/breeding_commands.h"
#include "ui/population_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace pelmora;
using namespace pelmora_test;

void retire_all_but(const PopulationWindow& window, const std::set<int>& live) {
    for (int i = 0; i < window.record()->lifeCount; ++i) {
        window.record()->lifeFlags[i] = live.count(i) != 0 ? LIVE_FLAG : std::uint16_t{0};
    }
}

bool all_live(const PopulationWindow& window) {
    const LogoWindow* record = window.record();
    return std::all_of(&record->lifeFlags[0], &record->lifeFlags[0] + record->lifeCount,
                       [](std::uint16_t flag) { return flag == LIVE_FLAG; });
}

std::vector<double> scores(const Population& pop) {
    std::vector<double> all;
    for (int i = 0; i < pop.size; ++i) {
        all.push_back(pop.lifers[i].score);
    }
    return all;
}

// The scores of the population when measured without pictures.
std::vector<double> measured_scores(const PopulationWindow& window) {
    std::vector<double> all;
    DrawContext ctx = window.record()->drawContext;
    for (int i = 0; i < window.record()->lifeCount; ++i) {
        RECT bounds{};
        draw_reset(&ctx);
        draw_run(nullptr, &ctx, window.record()->current->lifers[i].program, &bounds);
        all.push_back(draw_score(&ctx));
    }
    return all;
}

// Only copies are bred, so that a child identifies its parent.
EvolveParams copying_params(bool weights) {
    EvolveParams params = small_params(32);
    params.PCROSS = 0.0;
    if (!weights) {
        params.FWDMULT = params.TURNMULT = params.LOOPMULT = 0.0;
        params.CLRMULT = params.RPTMULT = params.REPMULT = 0.0;
    }
    return params;
}

TEST(Breeding, RetiredTurtlesHaveNoChildrenWhateverTheScores) {
    for (const bool weights : {true, false}) {
        const PopulationWindow window(copying_params(weights));
        const std::vector<std::string> parents = window.programs();
        const std::set<int> live = {3, 17, 30};
        retire_all_but(window, live);
        window.command(IDM_EVOLVE);
        std::set<std::string> allowed;
        for (const int i : live) {
            allowed.insert(parents[static_cast<std::size_t>(i)]);
        }
        for (const std::string& child : window.programs()) {
            EXPECT_EQ(allowed.count(child), 1U) << child;
        }
        EXPECT_TRUE(all_live(window));
        EXPECT_EQ(window.record()->previous->lifers[0].score, 0.0);
        EXPECT_TRUE(scores(*window.record()->current) == measured_scores(window));
        EXPECT_EQ(window.record()->busy, 0);
    }
}

TEST(Breeding, WhenAllAreRetiredAllHaveTheSameChance) {
    const PopulationWindow window(copying_params(false));
    const std::vector<std::string> parents = window.programs();
    window.command(IDM_ALL_RETIRE);
    window.command(IDM_EVOLVE);
    const std::vector<std::string> children = window.programs();
    EXPECT_GT(std::set<std::string>(children.begin(), children.end()).size(), 5U);
    EXPECT_TRUE(all_live(window));
}

TEST(Breeding, FiveGenerationsUseTheMarksOnceAndMeasureTheFourNotShown) {
    const PopulationWindow window(copying_params(true));
    const std::vector<std::string> parents = window.programs();
    retire_all_but(window, {4, 9});
    rng_seed(0.5);
    window.command(IDM_EVOLVE_FIVE);
    const double next = rng_draw();
    rng_seed(0.5);
    for (int taken = 0; taken < 5 * 16 * 3; ++taken) { // for each pair two parents and a coin
        rng_draw();
    }
    EXPECT_EQ(next, rng_draw());
    for (const std::string& program : window.programs()) {
        EXPECT_TRUE(program == parents[4] || program == parents[9]);
    }
    EXPECT_TRUE(scores(*window.record()->current) == measured_scores(window));
    const std::vector<double> fourth = scores(*window.record()->previous);
    retire_all_but(window, {});
    window.command(IDM_REVERT);
    EXPECT_TRUE(fourth == measured_scores(window));
    EXPECT_TRUE(all_live(window));
}

TEST(Breeding, MutateAndReplaceChangeOnlyTheSelectedTurtle) {
    const PopulationWindow window(small_params(8));
    LogoWindow* record = window.record();
    const std::vector<std::string> before = window.programs();
    EXPECT_EQ(alerts_of([&] { window.command(IDM_MUTATE); }),
              std::vector<std::string>{"You must select a turtle to mutate."});
    record->selected = 3;
    record->lifeFlags[3] = 0;
    while (window.programs()[3] == before[3]) {
        window.command(IDM_MUTATE);
    }
    EXPECT_TRUE(links_hold(record->current->lifers[3].program));
    EXPECT_TRUE(LogoReplaceTurtle(window.handle(), record, tree_of("( FWD_100 )").release()));
    EXPECT_EQ(record->current->lifers[3].program->slot, &record->current->lifers[3].program);
    EXPECT_EQ(record->current->lifers[3].score, 100 * 0.002 * record->drawContext.multipliers[0]);
    EXPECT_EQ(record->lifeFlags[3], 0);
    std::vector<std::string> after = window.programs();
    EXPECT_EQ(after[3], "( FWD_100 )");
    after[3] = before[3];
    EXPECT_TRUE(after == before);
}

TEST(Breeding, TheSingleViewNeverShowsAReleasedProgram) {
    const PopulationWindow window(small_params(8));
    LogoWindow* record = window.record();
    const RECT cell = LogoCellRect(record, 2);
    user::click(window.handle(), cell.left + 5, cell.top + 5, user::Button::right);
    settle();
    ASSERT_EQ(record->showGrid, 0);
    const ExprNode* shown = record->zoomTree;
    const auto shows_selected = [record] {
        return record->zoomTree == record->current->lifers[record->selected].program;
    };
    EXPECT_TRUE(shows_selected());
    window.command(IDM_EVOLVE);
    EXPECT_EQ(record->zoomTree, shown); // among the parents, and still there
    for (int i = 0; i < 3; ++i) {
        window.command(i == 1 ? IDM_EVOLVE_FIVE : IDM_EVOLVE);
        settle();
        window.command(IDM_MUTATE);
        settle();
        EXPECT_TRUE(shows_selected() || record->zoomTree->slot != nullptr);
    }
    const auto view = [&window] { return user::pixels(window.handle(), {0, 0, 400, 300}); };
    for (const char* program : {"( BLOCK ( FWD_5 ) ( LEFT_90 ) ( FWD_5 ) )", "( FWD_1 )"}) {
        LogoReplaceTurtle(window.handle(), record, tree_of(program).release());
        settle();
    }
    const auto alone = view();
    InvalidateRect(window.handle(), nullptr, TRUE);
    settle();
    EXPECT_TRUE(view() == alone); // without remains of the previous drawing
    record->selected = -1;
    window.command(IDM_EVOLVE);
    window.command(IDM_EVOLVE);
    window.command(IDM_EVOLVE);
    settle();
    EXPECT_EQ(record->zoomTree, nullptr); // no lifer is selected, so none is shown
}

} // namespace
