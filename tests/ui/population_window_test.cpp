// The population window: geometry, the mouse, and creation that fails.
#include "resources/resource.h"
#include "tests/support/answers.h"
#include "tests/support/failing_new.h"
#include "tests/ui/program.h"
#include "ui/new_population.h"
#include "ui/population_view.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace pelmora;
using namespace pelmora_test;
using Texts = std::vector<std::string>;

TEST(PopulationWindow, OpensInsideTheWorkArea) {
    const PopulationWindow window(small_params(8));
    RECT area{};
    RECT place{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    GetWindowRect(window.handle(), &place);
    EXPECT_LE(place.right - place.left, area.right - area.left - 10);
    if (user::programs_place_windows()) {
        EXPECT_EQ(place.left, area.left + 5);
        EXPECT_EQ(place.top, area.top + 5);
    }
}

TEST(PopulationWindow, CellsFillRowAfterRow) {
    const PopulationWindow window(small_params(20));
    LogoWindow* record = window.record();
    for (const auto& [width, columns] :
         {std::pair(0, 1), {99, 1}, {299, 2}, {300, 3}, {1000, 10}}) {
        user::resize(window.handle(), width, 200);
        settle();
        ASSERT_EQ(record->columns, columns) << width;
        for (int i = 0; i < 20; ++i) {
            const RECT cell = LogoCellRect(record, i);
            const LONG left = 6 + 100 * (i % columns);
            const LONG top = 6 + 100 * (i / columns);
            ASSERT_TRUE(cell.left == left && cell.right == left + 88) << i;
            ASSERT_TRUE(cell.top == top && cell.bottom == top + 88) << i;
            const auto hit = [&](LONG x, LONG y) {
                return LogoHitTest(window.handle(), record, {x, y});
            };
            EXPECT_EQ(hit(cell.left, cell.top), i);
            EXPECT_EQ(hit(cell.right - 1, cell.bottom - 1), i);
            EXPECT_EQ(hit(cell.left - 1, cell.top), -1);
            EXPECT_EQ(hit(cell.left, cell.top - 1), -1);
            EXPECT_EQ(hit(cell.right, cell.top), -1);
            EXPECT_EQ(hit(cell.left, cell.bottom), -1);
        }
        EXPECT_EQ(LogoHitTest(window.handle(), record, {6 + 100 * columns, 6}), -1);
        const RECT beyond = LogoCellRect(record, 20);
        EXPECT_EQ(LogoHitTest(window.handle(), record, {beyond.left, beyond.top}), -1);
    }
    EXPECT_EQ(LogoHitTest(window.handle(), record, {0xFFFF, 5}), -1);
}

TEST(PopulationWindow, ShiftTogglesMarksAlsoInTheSingleViewAndTwiceInADoubleClick) {
    const PopulationWindow window(small_params(8));
    const LogoWindow* record = window.record();
    const RECT cell = LogoCellRect(record, 1);
    const auto click = [&](user::Button button) {
        user::click(window.handle(), cell.left + 40, cell.top + 40, button, user::shift);
        settle();
    };
    click(user::Button::left);
    EXPECT_EQ(record->lifeFlags[1], 0);
    EXPECT_EQ(user::pixel(window.handle(), cell.left, cell.top), RGB(0xFF, 0x60, 0x60));
    user::double_click(window.handle(), cell.left + 40, cell.top + 40, user::shift);
    settle();
    EXPECT_EQ(record->lifeFlags[1], 0);
    click(user::Button::right);
    EXPECT_EQ(record->showGrid, 0);
    click(user::Button::right);
    EXPECT_EQ(record->showGrid, 0);
    EXPECT_EQ(record->lifeFlags[1], LIVE_FLAG);
    user::click(window.handle(), 3, 3);
    settle();
    EXPECT_EQ(record->showGrid, 1);
    EXPECT_EQ(user::pixel(window.handle(), cell.left, cell.top), RGB(0x60, 0x60, 0xFF));
    EXPECT_EQ(user::pixel(window.handle(), cell.left - 4, cell.top), RGB(0, 0, 0));
}

// The commands and paints that a window receives.
Texts received;

LRESULT CALLBACK RecordingProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                               DWORD_PTR) {
    if (message == WM_COMMAND) {
        received.push_back(LOWORD(wparam) == IDM_EVOLVE ? "evolve" : "revert");
    } else if (message == WM_PAINT) {
        received.emplace_back("paint");
    }
    return DefSubclassProc(window, message, wparam, lparam);
}

TEST(PopulationWindow, AHeldKeyQueuesOnePressAndEachResultIsPainted) {
    const PopulationWindow window(small_params(8));
    const Texts first = window.programs();
    SetWindowSubclass(window.handle(), RecordingProc, 0, 0);
    received.clear();
    user::hold(window.handle(), "Ctrl+E", 5);
    user::let_go(window.handle(), "Ctrl+E");
    user::press(window.handle(), "Ctrl+R");
    settle();
    EXPECT_EQ(received, (Texts{"evolve", "paint", "revert", "paint"}));
    EXPECT_EQ(window.programs(), first);
    received.clear();
    for (int taps = 0; taps < 2; ++taps) {
        user::press(window.handle(), "Ctrl+E");
    }
    settle();
    EXPECT_EQ(received, (Texts{"evolve", "paint", "evolve", "paint"}));
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

TEST(PopulationDialog, ReadsASliderWhoseKeyIsReleasedElsewhere) {
    prepare_program();
    const char* title = "Population Description";
    Answers()
        .dialog(title,
                [](HWND dialog) {
                    for (int i = 0; i < 10; ++i) { // each slider a different one
                        SendMessageA(GetDlgItem(dialog, IDC_FWDMULT + i), TBM_SETPOS, TRUE,
                                     LPARAM{10} * i);
                    }
                    SendMessageA(GetDlgItem(dialog, IDC_PCROSS), TBM_SETPOS, TRUE, 80);
                    SendMessageA(GetDlgItem(dialog, IDC_PMUTATE), TBM_SETPOS, TRUE, 29);
                })
        .press(title, "Esc")
        .gone(title)
        .during(NewPopulation);
    Answers()
        .dialog(title,
                [](HWND dialog) {
                    user::focus(dialog, IDC_PCROSS);
                    user::hold(dialog, "Right", 0);
                })
        .press(title, "Tab")
        .dialog(title, [](HWND dialog) { user::let_go(dialog, "Right"); })
        .press(title, "Return")
        .gone(title)
        .during(NewPopulation);
    EXPECT_EQ(newPopParams.PCROSS, 0.85F);
    EXPECT_EQ(newPopParams.PMUTATE, 0.29F); // though its slider shows 28
    const EvolveParams& p = newPopParams;
    const double others[] = {p.FWDMULT,  p.REPMULT,  p.RPTMULT, p.CLRMULT,
                             p.LOOPMULT, p.TURNMULT, p.PFNODE,  p.PCOLOR};
    const float wanted[] = {0.0F, 0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 0.8F, 0.9F};
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(others[i], wanted[i]) << i;
    }
    user::close(user::find_window("Pelmora Logo Window"));
    settle();
}

// Its modal loop continues only when the alert that another window opened later is closed.
TEST(PopulationDialog, ADelayedOneKeepsItsAnswerAndItsSettings) {
    const PopulationWindow window(small_params(8));
    const char* title = "Population Description";
    const auto end = [](WPARAM button) {
        return [button](HWND dialog) { PostMessageA(dialog, WM_COMMAND, button, 0); };
    };
    Answers()
        .dialog(title,
                [&window](HWND dialog) {
                    SetDlgItemTextA(dialog, IDC_TURTLES, "10");
                    PostMessageA(window.handle(), WM_COMMAND, IDM_COPY, 0);
                })
        .dialog("Dialog", [](HWND) {})
        .dialog(title, end(IDOK))
        .gone(title)
        .then(NewPopulation)
        .dialog(
            title,
            [](HWND dialog) { SendMessageA(GetDlgItem(dialog, IDC_PCROSS), TBM_SETPOS, TRUE, 50); })
        .dialog(title, end(IDCANCEL))
        .gone(title)
        .alert("You must select a turtle to copy.")
        .during(NewPopulation);
    EXPECT_EQ(newPopParams.size, 10);
    EXPECT_NE(newPopParams.PCROSS, 0.5F);
    user::close(user::find_window("Pelmora Logo Window"));
    settle();
}

TEST(PopulationWindow, CreationOutOfMemoryIsReportedAndLeavesNothing) {
    prepare_program();
    for (std::size_t good = 0; good < 5; ++good) {
        const auto texts = alerts_of([good] {
            const FailingNew memory(good);
            EXPECT_EQ(CreateLogoWindow(nullptr, small_params(8)), nullptr);
        });
        const auto step = std::to_string(good == 0 ? 1 : 2); // the record, then its arrays
        EXPECT_EQ(texts, good < 4
                             ? Texts{"Could not allocate memory for LogoWindow [" + step + "]."}
                             : Texts({"Not enough memory to allocate populations.",
                                      "Could not initialize populations."}));
    }
    settle();
    EXPECT_EQ(user::count_windows("Pelmora Logo Window"), 0);
}

} // namespace
