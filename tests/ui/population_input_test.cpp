// The population window's keys, and what it tells assistive technology.
#include "tests/ui/program.h"
#include "ui/population_cells.h"
#include "ui/population_view.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using namespace pelmora;
using namespace pelmora_test;

// Three columns: eight cells are in rows of 3, 3 and 2.
class PopulationKeys : public testing::Test {
  protected:
    PopulationKeys() {
        user::resize(window_.handle(), 300, 300);
        settle();
    }
    void press(const std::string& keys) {
        user::press(window_.handle(), keys);
        settle();
    }
    bool framed(int index) {
        const RECT cell = LogoCellRect(record_, index);
        return user::pixel(window_.handle(), cell.left - 4, cell.top) == RGB(0, 0, 0);
    }

    PopulationWindow window_{small_params(8)};
    LogoWindow* record_ = window_.record();
};

TEST_F(PopulationKeys, MoveTheSelectionByRowsAndColumns) {
    press("Space");
    press("Return");
    EXPECT_EQ(record_->selected, -1); // nothing to act on
    const std::pair<const char*, int> moves[] = {
        {"Up", 0},   {"Up", 0},   {"Left", 0}, {"Right", 1}, {"Right", 2}, {"Right", 3},
        {"Left", 2}, {"Down", 5}, {"Down", 5}, {"Left", 4},  {"Down", 7},  {"Right", 7},
        {"Up", 4},   {"Home", 0}, {"End", 7},  {"Esc", 7}};
    int before = 0;
    for (const auto& [key, place] : moves) {
        press(key);
        ASSERT_EQ(record_->selected, place) << key << " from " << before;
        EXPECT_TRUE(framed(place)) << place;
        EXPECT_TRUE(place == before || !framed(before)) << before;
        before = place;
    }
}

TEST_F(PopulationKeys, RetireAndShowAlone) {
    press("Right");
    press("Space");
    EXPECT_EQ(record_->lifeFlags[0], 0);
    press("Return");
    EXPECT_EQ(record_->zoomTree, record_->current->lifers[0].program);
    press("Left");
    EXPECT_EQ(record_->zoomTree, record_->current->lifers[0].program);
    press("Right");
    EXPECT_EQ(record_->showGrid, 0);
    EXPECT_EQ(record_->zoomTree, record_->current->lifers[1].program);
    press("Down"); // not in the single view
    press("Space");
    EXPECT_EQ(record_->lifeFlags[1], 0);
    press("Esc");
    EXPECT_EQ(record_->showGrid, 1);
    EXPECT_TRUE(framed(1));
    EXPECT_FALSE(framed(0));
}

TEST_F(PopulationKeys, AreNamedAsTheyAreShown) {
    const PopulationCells cells(record_);
    record_->current->lifers[6].score = 12.46;
    EXPECT_EQ(cells.cells(), 8);
    EXPECT_EQ(cells.columns(), 3);
    EXPECT_EQ(cells.cell(6).name, "Turtle 7");
    EXPECT_EQ(cells.cell(6).description, "live, score 12.5");
    // An action may arrive when its cell is gone.
    for (const LPARAM gone : {LPARAM{-1}, LPARAM{8}, LPARAM{100000}}) {
        SendMessageA(window_.handle(), platform::kAccessibleAction,
                     static_cast<WPARAM>(platform::AccessibleAction::toggle), gone);
    }
    EXPECT_EQ(record_->selected, -1);
    press("End"); // from nothing to the first
    press("End");
    press("Return");
    EXPECT_EQ(cells.cells(), 1);
    EXPECT_EQ(cells.cell(0).name, "Turtle 8 alone");
    SendMessageA(window_.handle(), platform::kAccessibleAction,
                 static_cast<WPARAM>(platform::AccessibleAction::toggle), 0);
    EXPECT_EQ(record_->lifeFlags[7], 0);
    EXPECT_TRUE(cells.cell(0).description.starts_with("retired, score "));
}

} // namespace
