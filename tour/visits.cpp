// The tour's steps, except those for files, the clipboard and the editor.
#include "resources/resource.h"
#include "services/status.h"
#include "tour/grid.h"
#include "tour/places.h"
#include "tour/tour.h"

#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tour {

namespace {

// Cells of the first generation of the tour's seed, and of the one five generations on.
constexpr int kDull[] = {2, 5, 9, 10, 14, 15, 22, 36, 39, 41, 42};
constexpr int kFirstFavourite = 33;
constexpr int kFavourite = 17;

std::vector<std::uint32_t> status_line() {
    RECT line = pelmora::StatusRect(main_window());
    line.right = line.left + 196;
    return user::pixels(main_window(), line);
}

// Whether the second half of the status line is empty.
bool status_ends_here(const std::vector<std::uint32_t>& line) {
    constexpr std::size_t kWidth = 196;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (at % kWidth >= kWidth / 2 && line[at] != line.back()) {
            return false;
        }
    }
    return true;
}

// Presses a key in the population window; `checks` gets the grid from before.
void key(Tour& tour, const std::string& keys, std::function<void(Grid& grid)> checks) {
    auto grid = std::make_shared<Grid>();
    tour.step(keys, [grid, keys] {
        *grid = Grid(population());
        user::press(population(), keys);
    });
    tour.step("after " + keys, [grid, checks = std::move(checks)] { checks(*grid); });
}

} // namespace

void visit_main_window(Tour& tour) {
    tour.wait_for(kMain);
    tour.picture("main-window", kMain);
    tour.step("its size", [&tour] {
        RECT outer{};
        GetWindowRect(main_window(), &outer);
        tour.check(outer.right - outer.left == 480 && outer.bottom - outer.top == 75,
                   "the main window's outer size");
    });
    tour.step("the menus", [&tour] {
        const std::vector<std::string> wanted = {
            "&File:", "&New Population... | Ctl+N", "-", "E&xit | Ctl+Q", "&Help:", "&About ..."};
        tour.check(user::menu_lines(main_window()) == wanted, "the main window's menus");
    });
    tour.step("Alt+/", [] { user::press(main_window(), "Alt+/"); });
    tour.wait_for("About");
    tour.picture("about", "About");
    tour.step("Escape", [] { user::press(user::find_window("About"), "Esc"); });
    tour.wait_until_gone("About");
    tour.step("About by the mouse", [&tour] {
        tour.check(user::choose(main_window(), "Help", "About ..."), "the menu");
    });
    tour.wait_for("About");
    tour.step("Return", [] { user::press(user::find_window("About"), "Return"); });
    tour.wait_until_gone("About");
}

void visit_first_population(Tour& tour) {
    tour.step("Ctrl+N", [] { user::press(main_window(), "Ctrl+N"); });
    tour.wait_for(kDialog);
    tour.picture("new-population", kDialog);
    tour.step("what the dialog shows", [&tour] {
        const std::pair<int, const char*> texts[] = {
            {IDC_TURTLES, "48"}, {IDC_MAX_CHILDREN, "4"}, {IDC_MAX_DEPTH, "9"}};
        for (const auto& [control, text] : texts) {
            tour.check(user::text(dialog(), control) == text, text);
        }
        const std::pair<int, int> sliders[] = {
            {IDC_PCROSS, 80},  {IDC_PMUTATE, 20},  {IDC_PFNODE, 75},   {IDC_PCOLOR, 10},
            {IDC_FWDMULT, 50}, {IDC_TURNMULT, 30}, {IDC_LOOPMULT, 20}, {IDC_CLRMULT, 10},
            {IDC_RPTMULT, 10}, {IDC_REPMULT, 5}};
        for (const auto& [control, position] : sliders) {
            tour.check(user::position(dialog(), control) == position,
                       "slider " + std::to_string(control));
        }
        user::press(dialog(), "Return");
    });
    tour.wait_for(kPopulation);
    tour.step("four rows of twelve", show_four_rows);
    tour.step("48 live turtles", [&tour] {
        const Grid grid(population());
        tour.check(grid.count(Frame::live) == 48, "48 light blue frames");
        tour.check(grid.frame(48) == Frame::none, "and no more");
        tour.check(grid.drawn() >= 10 && grid.drawn() <= 38, "about half of them are drawings");
    });
    tour.step("retire the dull ones", [] {
        for (const int cell : kDull) {
            click_cell(population(), cell, user::Button::left, user::shift);
        }
    });
    tour.step("select one", [&tour] {
        const Grid grid(population());
        for (const int cell : kDull) {
            tour.check(grid.frame(cell) == Frame::retired, "light red " + std::to_string(cell));
        }
        tour.check(grid.count(Frame::retired) == static_cast<int>(std::size(kDull)),
                   "the others live");
        tour.check(grid.selected() == *std::rbegin(kDull), "the last one clicked is selected");
        click_cell(population(), kFirstFavourite);
    });
    tour.step("a moment", [&tour] {
        tour.check(Grid(population()).selected() == kFirstFavourite, "a click selects");
    });
    tour.picture("retired-and-selected", kPopulation);
    tour.step("a click beside the cells", [] { user::click(population(), 98, 50); });
    tour.step("no selection", [&tour] {
        tour.check(Grid(population()).selected() == -1, "the frame is gone");
        user::press(population(), "Ctrl+M");
    });
    expect_alert(tour, "You must select a turtle to mutate.", "refusal");
    tour.step("Ctrl+R too early", [] { user::press(population(), "Ctrl+R"); });
    expect_alert(tour, "You must evolve the population before you can revert it.");
}

namespace {

void visit_single_view(Tour& tour) {
    auto grid = std::make_shared<Grid>();
    tour.step("a square window", [] { user::resize(population(), 610, 610); });
    tour.step("look at one turtle alone", [grid] {
        *grid = Grid(population());
        click_cell(population(), kFavourite, user::Button::right);
    });
    tour.step("its drawing fills the window", [&tour] {
        tour.check(Grid(population()).count(Frame::none) == 48, "no grid");
        tour.check(reaches_all_edges(population()), "the drawing reaches every edge");
    });
    tour.picture("one-alone", kPopulation);
    tour.step("and back", [] { user::click(population(), 600, 300); });
    tour.step("the grid again", [&tour, grid] {
        Grid now(population());
        tour.check(now.changed_from(*grid) == 0, "every picture is back");
        tour.check(now.selected() == kFavourite, "and the selection");
        show_four_rows();
    });
}

} // namespace

void visit_breeding(Tour& tour) {
    key(tour, "Ctrl+F", [&tour](Grid& before) {
        const Grid now(population());
        tour.check(now.changed_from(before) >= 40, "five generations on");
        tour.check(now.drawn() > before.drawn(), "fewer cells are blank");
        click_cell(population(), kFavourite);
    });
    tour.picture("five-generations-on", kPopulation);
    visit_single_view(tour);
    // The grids of before and after Ctrl+E.
    auto generations = std::make_shared<std::vector<Grid>>();
    key(tour, "Ctrl+E", [&tour, generations](Grid& before) {
        const Grid now(population());
        tour.check(now.count(Frame::live) == 48, "all live again");
        tour.check(now.changed_from(before) >= 40, "the pictures are new");
        *generations = {before, now};
    });
    tour.picture("evolved", kPopulation);
    for (const int shown : {0, 1, 0}) {
        key(tour, "Ctrl+R", [&tour, generations, shown](Grid&) {
            const Grid now(population());
            tour.check(now.changed_from((*generations)[static_cast<std::size_t>(shown)]) == 0,
                       shown == 0 ? "the pictures of before" : "the pictures of after");
            tour.check(now.count(Frame::live) == 48, "all live");
        });
    }
    tour.picture("reverted", kPopulation);
    key(tour, "Ctrl+K", [&tour](Grid& before) {
        const Grid now(population());
        tour.check(now.count(Frame::retired) == 48, "all retired");
        tour.check(now.changed_from(before) == 0, "the same pictures");
    });
    key(tour, "Ctrl+L",
        [&tour](Grid&) { tour.check(Grid(population()).count(Frame::live) == 48, "all live"); });
    // Several mutations, as one may not change the picture.
    auto grid = std::make_shared<Grid>();
    tour.step("Ctrl+M", [grid] {
        *grid = Grid(population());
        for (int i = 0; i < 8; ++i) {
            user::press(population(), "Ctrl+M");
        }
    });
    tour.step("after Ctrl+M", [&tour, grid] {
        tour.check(Grid(population()).changed_from(*grid) == 1, "one turtle has changed");
    });
    tour.step("evolve by the mouse", [&tour, grid] {
        *grid = Grid(population());
        tour.check(user::choose(population(), "File", "Evolve Population"), "the menu");
    });
    tour.step("make the window narrow", [&tour, grid] {
        tour.check(Grid(population()).changed_from(*grid) >= 40, "the pictures are new");
        *grid = Grid(population());
        user::resize(population(), 350, 700);
    });
    tour.step("three columns", [&tour, grid] {
        const Grid now(population());
        tour.check(now.columns() == 3 && now.frame(20) == Frame::live, "cells in three columns");
        tour.check(now.count(Frame::live) == 21, "as many as there is room for");
        tour.check(now.selected() == kFavourite, "the selection went along");
    });
    tour.picture("narrow", kPopulation);
}

void visit_second_population(Tour& tour) {
    auto status = std::make_shared<std::vector<std::uint32_t>>();
    tour.step("New Population by the mouse", [&tour, status] {
        *status = status_line();
        tour.check(user::choose(main_window(), "File", "New Population..."), "the menu");
    });
    tour.wait_for(kDialog);
    tour.step("move a slider and dismiss", [] {
        user::focus(dialog(), IDC_PCROSS);
        user::press(dialog(), "PgUp");
        user::press(dialog(), "PgDown");
        user::press(dialog(), "End");
    });
    tour.step("Escape", [] { user::press(dialog(), "Esc"); });
    tour.wait_until_gone(kDialog);
    tour.picture("user-canceled", kMain);
    tour.step("Ctrl+N again", [&tour, status] {
        tour.check(status_line() != *status, "the status line has another text");
        tour.check(!status_ends_here(*status) && status_ends_here(status_line()),
                   "which is shorter, with nothing of the longer one behind it");
        tour.check(std::string(pelmora::StatusText()) == "User canceled.", "which says so");
        user::press(main_window(), "Ctrl+N");
    });
    tour.wait_for(kDialog);
    tour.step("the slider is remembered", [&tour] {
        tour.check(user::position(dialog(), IDC_PCROSS) == 100, "at its end");
        user::focus(dialog(), IDC_PCROSS);
        user::press(dialog(), "End");
        user::type(dialog(), IDC_TURTLES, "");
        user::press(dialog(), "Return");
    });
    tour.step("an empty number keeps the dialog open", [&tour] {
        tour.check(dialog() != nullptr, "still open");
        user::type(dialog(), IDC_TURTLES, "  6 turtles");
        user::click_arrow(dialog(), IDC_TURTLES_SPIN, true);
    });
    tour.step("numbers beyond what there can be", [&tour] {
        tour.check(user::text(dialog(), IDC_TURTLES) == "7", "an arrow steps the number");
        user::type(dialog(), IDC_MAX_CHILDREN, "99999999999");
        user::type(dialog(), IDC_MAX_DEPTH, "-5");
        user::click_control(dialog(), IDOK);
    });
    tour.wait_until_gone(kDialog);
    tour.step("a window of eight", [&tour] {
        tour.check(user::count_windows(kPopulation) == 2, "two population windows");
        const Grid grid(population());
        tour.check(grid.count(Frame::live) == 8, "7 became 8");
        user::press(population(), "Ctrl+N"); // no command of this window
    });
    tour.picture("a-window-of-eight", kPopulation);
}

void leave(Tour& tour) {
    tour.step("close the newer window", [&tour] {
        tour.check(dialog() == nullptr, "Ctrl+N is the main window's alone");
        user::close(population());
    });
    tour.step("an alert that stays open", [&tour] {
        tour.check(user::count_windows(kPopulation) == 1, "one population window is left");
        user::click(population(), 98, 50);
        user::press(population(), "Ctrl+M");
        user::press(population(), "Ctrl+E"); // ignored: the alert blocks the window by then
    });
    tour.wait_for(kAlert);
    tour.step("Ctrl+Q", [] { user::press(main_window(), "Ctrl+Q"); });
}

} // namespace tour
