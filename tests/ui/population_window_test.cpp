// The population window: geometry, the mouse, and creation that fails.
#include "resources/resource.h"
#include "tests/support/failing_new.h"
#include "tests/ui/program.h"
#include "ui/population_view.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using namespace pelmora;
using namespace pelmora_test;

// The cell that a walk from cell to cell finds first.
int walked_hit(const LogoWindow* record, POINT point) {
    for (int i = 0; i < record->lifeCount; ++i) {
        const RECT cell = LogoCellRect(record, i);
        if (PtInRect(&cell, point)) {
            return i;
        }
    }
    return -1;
}

TEST(PopulationWindow, OpensInsideTheWorkAreaWithItsWeightsInOrder) {
    const PopulationWindow window(small_params(8));
    RECT area{};
    RECT place{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    GetWindowRect(window.handle(), &place);
    EXPECT_EQ(place.left, area.left + 5);
    EXPECT_EQ(place.top, area.top + 5);
    EXPECT_LE(place.right, area.right - 5);
    const DrawContext& ctx = window.record()->drawContext;
    EXPECT_EQ(ctx.multipliers, (std::array<double, 6>{0.5, 0.3, 0.2, 0.1, 0.15, 0.05}));
    EXPECT_EQ(ctx.max_steps, 10240);
}

TEST(PopulationWindow, CellsFillRowAfterRow) {
    const PopulationWindow window(small_params(20));
    LogoWindow* record = window.record();
    for (const auto& [width, columns] :
         {std::pair(0, 1), {99, 1}, {299, 2}, {300, 3}, {1000, 10}}) {
        user::resize(window.handle(), width, 200);
        settle();
        ASSERT_EQ(record->columns, columns) << width;
        const RECT cell = LogoCellRect(record, 13);
        EXPECT_EQ(cell.left, 6 + 100 * (13 % columns));
        EXPECT_EQ(cell.top, 6 + 100 * (13 / columns));
        EXPECT_EQ(cell.right - cell.left, 88);
        for (LONG y = 0; y < 2100; y += 3) {
            for (LONG x = 0; x < 1100; x += 31) {
                const POINT point{x, y};
                ASSERT_EQ(LogoHitTest(window.handle(), record, point), walked_hit(record, point));
            }
        }
    }
    EXPECT_EQ(LogoHitTest(window.handle(), record, {0xFFFF, 5}), -1);
}

TEST(PopulationWindow, ShiftTogglesMarksAlsoUnseenAndTwiceInADoubleClick) {
    const PopulationWindow window(small_params(8));
    const LogoWindow* record = window.record();
    const RECT cell = LogoCellRect(record, 1);
    const int x = cell.left + 40;
    const int y = cell.top + 40;
    user::click(window.handle(), x, y, user::Button::left, user::shift);
    settle();
    EXPECT_EQ(record->lifeFlags[1], 0);
    EXPECT_EQ(user::pixel(window.handle(), cell.left, cell.top), RGB(0xFF, 0x60, 0x60));
    user::double_click(window.handle(), x, y, user::shift);
    settle();
    EXPECT_EQ(record->lifeFlags[1], 0);
    user::click(window.handle(), x, y, user::Button::right, user::shift);
    settle();
    EXPECT_EQ(record->showGrid, 0);
    user::click(window.handle(), x, y, user::Button::right, user::shift);
    settle();
    EXPECT_EQ(record->showGrid, 0);
    EXPECT_EQ(record->lifeFlags[1], LIVE_FLAG);
    user::click(window.handle(), 3, 3);
    settle();
    EXPECT_EQ(record->showGrid, 1);
    EXPECT_EQ(user::pixel(window.handle(), cell.left, cell.top), RGB(0x60, 0x60, 0xFF));
    EXPECT_EQ(user::pixel(window.handle(), cell.left - 4, cell.top), RGB(0, 0, 0));
}

TEST(PopulationWindow, PaintsWithoutTheSelectionWhileBusy) {
    const PopulationWindow window(small_params(8));
    LogoWindow* record = window.record();
    const RECT cell = LogoCellRect(record, 0);
    record->selected = 0;
    record->busy = 1;
    for (const COLORREF color : {RGB(255, 255, 255), RGB(0, 0, 0)}) {
        InvalidateRect(window.handle(), nullptr, TRUE);
        settle();
        EXPECT_EQ(user::pixel(window.handle(), cell.left - 3, cell.top), color);
        record->busy = 0;
    }
}

TEST(PopulationWindow, CreationThatRunsOutOfMemoryTellsSoAndLeavesNothing) {
    prepare_program();
    const std::string arrays = "Could not allocate memory for LogoWindow [2].";
    const std::vector<std::vector<std::string>> told = {
        {"Could not allocate memory for LogoWindow [1]."}, {arrays}, {arrays}, {arrays}};
    for (std::size_t good = 0; good < told.size(); ++good) {
        HWND window = nullptr;
        const auto create = [&] {
            const FailingNew memory(good);
            window = CreateLogoWindow(nullptr, small_params(8));
        };
        EXPECT_EQ(alerts_of(create), told[good]) << good;
        EXPECT_EQ(window, nullptr);
    }
    const auto create = [] {
        const FailingNew memory(4); // the record and its arrays, nothing for the populations
        EXPECT_EQ(CreateLogoWindow(nullptr, small_params(8)), nullptr);
    };
    EXPECT_EQ(alerts_of(create),
              (std::vector<std::string>{"Not enough memory to allocate populations.",
                                        "Could not initialize populations."}));
    settle();
    EXPECT_EQ(user::count_windows("Pelmora Logo Window"), 0);
}

TEST(PopulationWindow, ClosingUnderAnAlertEndsTheCommandThere) {
    const PopulationWindow window(small_params(8));
    const auto texts = alerts_of([&] { window.command(IDM_MUTATE); },
                                 [&](HWND) { DestroyWindow(window.handle()); });
    EXPECT_EQ(texts.size(), 1U);
    EXPECT_FALSE(IsWindow(window.handle()));
    settle();
    EXPECT_EQ(user::find_window("Dialog"), nullptr);
}

TEST(PopulationWindow, OtherCommandsDoNothing) {
    const PopulationWindow window(small_params(8));
    const std::vector<std::string> before = window.programs();
    for (const int id : {IDM_NEW_POPULATION, IDM_CUT, IDM_DELETE, IDM_ABOUT, IDM_EXIT, 1, 0xFFFF}) {
        EXPECT_TRUE(alerts_of([&] { window.command(id); }).empty()) << id;
    }
    settle();
    EXPECT_TRUE(window.programs() == before);
    EXPECT_EQ(user::find_window("Population Description"), nullptr);
}

} // namespace
