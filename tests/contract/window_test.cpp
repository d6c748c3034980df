// Windows, their messages and their dialogs.
#include "resources/resource.h"
#include "tests/contract/test_windows.h"
#include "tests/support/answers.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <utility>

namespace {

using namespace pelmora_test;
using user::Modifier;

TEST_F(Windows, AreCreatedAndDestroyedInOrder) {
    RECT client{};
    GetClientRect(window_, &client);
    EXPECT_EQ(created_, Lines{"create"});
    RECT outer{};
    GetWindowRect(window_, &outer);
    EXPECT_EQ(outer.right - outer.left, 400); // as requested
    EXPECT_EQ(outer.bottom - outer.top, 300);
    const std::string size = std::to_string(client.right) + "," + std::to_string(client.bottom);
    shown_.resize(3); // a window manager may cause more messages
    EXPECT_EQ(shown_, (Lines{"erase", "size " + size, "paint"}));
    EXPECT_EQ(SetWindowLongPtrA(window_, 0, 77), 0);
    EXPECT_EQ(SetWindowLongPtrA(window_, 8, 78), 0);
    EXPECT_EQ(GetWindowLongPtrA(window_, 0), 77);
    EXPECT_EQ(SetWindowLongPtrA(window_, 9, 1), 0); // beyond the extra bytes

    PostMessageA(window_, WM_USER, 0, 0);
    EXPECT_TRUE(DestroyWindow(window_));
    EXPECT_FALSE(IsWindow(window_));
    EXPECT_FALSE(DestroyWindow(window_));
    EXPECT_FALSE(PostMessageA(window_, WM_USER, 0, 0));
    settle();
    EXPECT_EQ(take_log(), (Lines{"destroy"})); // the posted message was dropped
}

// Draws outside of WM_PAINT.
void fill(HWND window, const RECT& area) {
    HDC device = GetDC(window);
    FillRect(device, &area, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    ReleaseDC(window, device);
}

HWND create(const char* name) {
    return CreateWindowExA(0, name, "", 0, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
}

TEST_F(Windows, InvalidClassesAndWindowsAreRefused) {
    WNDCLASSEXA again{};
    again.cbSize = sizeof again;
    again.lpfnWndProc = DefWindowProcA;
    again.lpszClassName = "Logging";
    EXPECT_EQ(RegisterClassExA(&again), 0);
    EXPECT_EQ(GetLastError(), ERROR_CLASS_ALREADY_EXISTS);
    EXPECT_EQ(create("No such class"), nullptr);
    EXPECT_NE(GetLastError(), ERROR_SUCCESS);
    on_message = [](HWND window, UINT message, WPARAM) {
        return message == WM_CREATE ? LRESULT{DestroyWindow(window)} : 0;
    };
    EXPECT_EQ(create("Logging"), nullptr);
    on_message = [](HWND, UINT message, WPARAM) { return message == WM_CREATE ? -1 : 0; };
    EXPECT_EQ(create("Logging"), nullptr);
    EXPECT_EQ(GetDC(reinterpret_cast<HWND>(12345)), nullptr);
}

TEST_F(Windows, MayBeDestroyedWhileTheyAreShown) {
    for (const UINT when : {WM_ERASEBKGND, WM_SIZE, WM_PAINT}) {
        on_message = [when](HWND window, UINT message, WPARAM) -> LRESULT {
            if (message != when) {
                return 0;
            }
            HDC device = GetDC(window);
            const RECT square{0, 0, 50, 50};
            FillRect(device, &square, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
            DestroyWindow(window);
            ReleaseDC(window, device);
            return 1;
        };
        HWND window = show_other();
        UpdateWindow(window);
        EXPECT_FALSE(IsWindow(window)) << when;
    }
}

TEST_F(Windows, PaintAfterEverythingElseAndEraseOnlyWhenAsked) {
    const RECT part{10, 10, 20, 20};
    InvalidateRect(window_, &part, FALSE);
    PostMessageA(window_, WM_USER + 1, 0, 0);
    settle();
    EXPECT_EQ(take_log(), (Lines{"user 1", "paint"}));

    InvalidateRect(window_, &part, FALSE);
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
    UpdateWindow(window_);
    settle();
    EXPECT_EQ(take_log(), (Lines{"paint", "erase"}));

    user::resize(window_, 333, 222);
    settle();
    EXPECT_EQ(take_log(), (Lines{"erase", "size 333,222", "paint"}));
}

TEST_F(Windows, DrawingOutsidePaintingPersistsAndPaintingIsClipped) {
    fill(window_, {0, 0, 50, 50});
    on_message = [](HWND window, UINT message, WPARAM) -> LRESULT {
        if (message != WM_PAINT) {
            return 0;
        }
        PAINTSTRUCT paint;
        HDC on = BeginPaint(window, &paint);
        const RECT hidden{60, 0, 70, 70};
        const RECT touched{119, 0, 121, 70};
        EXPECT_FALSE(RectVisible(on, &hidden));
        EXPECT_TRUE(RectVisible(on, &touched));
        EXPECT_EQ(paint.rcPaint.left, 100);
        EXPECT_EQ(paint.rcPaint.right, 140);
        const RECT all{0, 0, 400, 400};
        FillRect(on, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        EndPaint(window, &paint);
        return 1;
    };
    const RECT one{100, 0, 120, 30};
    const RECT two{130, 10, 140, 40};
    InvalidateRect(window_, &one, FALSE);
    InvalidateRect(window_, &two, FALSE);
    settle();
    on_message = nullptr;
    EXPECT_EQ(user::pixel(window_, 10, 10), RGB(0, 0, 0));
    EXPECT_EQ(user::pixel(window_, 119, 29), RGB(0, 0, 0));
    EXPECT_EQ(user::pixel(window_, 139, 39), RGB(0, 0, 0));
    EXPECT_EQ(user::pixel(window_, 120, 10), RGB(255, 255, 255)); // between the two parts
    EXPECT_EQ(user::pixel(window_, 119, 35), RGB(255, 255, 255));
    InvalidateRect(window_, nullptr, TRUE);
    settle();
    EXPECT_EQ(user::pixel(window_, 10, 10), RGB(255, 255, 255));
}

TEST_F(Windows, MovingAndUncoveringKeepTheDrawing) {
    fill(window_, {0, 0, 50, 50});
    HDC device = GetDC(window_);
    MoveToEx(device, 60, 20, nullptr);
    LineTo(device, 90, 20);
    ReleaseDC(window_, device);
    settle();
    EXPECT_EQ(user::pixel(window_, 70, 20), RGB(0, 0, 0));
    RECT place{};
    GetWindowRect(window_, &place);
    MoveWindow(window_, place.left + 30, place.top + 10, place.right - place.left,
               place.bottom - place.top, TRUE);
    settle();
    EXPECT_EQ(take_log(), Lines{});
    HWND above = show_other();
    MoveWindow(above, place.left, place.top, 300, 200, TRUE);
    settle();
    EXPECT_EQ(user::pixel(window_, 10, 10), RGB(0, 0, 0));
    take_log();
    DestroyWindow(above);
    settle();
    EXPECT_EQ(take_log(), Lines{"destroy"});
    EXPECT_EQ(user::pixel(window_, 10, 10), RGB(0, 0, 0));
}

TEST_F(Windows, AllowAnySizeAndDeviceContextsThatOutliveThem) {
    HDC dc = GetDC(window_);
    for (const auto& [width, height] :
         {std::pair(0, 0), {1, 1}, {20'000, 3}, {30'000, 30'000}, {400, 300}}) {
        user::resize(window_, width, height);
        const RECT all{-5, -5, 30'000, 30'000};
        FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        settle();
    }
    DestroyWindow(window_);
    LineTo(dc, 100, 100);
    ReleaseDC(window_, dc);
}

TEST_F(Windows, MouseMessagesCarryPositionAndKeys) {
    user::click(window_, 7, 9, user::Button::left, Modifier::shift);
    user::click(window_, 300, 5, user::Button::right, Modifier::control);
    settle();
    EXPECT_EQ(take_log(), (Lines{"left 5 at 7,9", "right 10 at 300,5"}));
    user::double_click(window_, 8, 8);
    settle();
    EXPECT_EQ(take_log(), (Lines{"left 1 at 8,8", "double at 8,8"}));
    user::close(window_);
    settle();
    EXPECT_EQ(take_log(), (Lines{"close", "destroy"}));
}

TEST_F(Windows, ShortcutsSendCommandsUnlessTheirEntryIsDisabled) {
    for (const char* keys :
         {"Ctrl+E", "Ctrl+Shift+E", "E", "Alt+E", "Ctrl+X", "Alt+/", "Alt+?", "/", "Ctrl+N"}) {
        user::press(window_, keys);
    }
    settle();
    EXPECT_EQ(take_log(), (Lines{"command 32771 from 1", "command 104 from 1", "command 104 from 1",
                                 "command 32774 from 1"}));
}

TEST_F(Windows, F10OpensTheMenu) {
    user::Script script(end_script);
    for (const char* key : {"F10", "Down", "Esc", "Esc", "F10", "Down", "Down", "Return"}) {
        script.then(key, [this, key] { user::press(window_, key); });
    }
    script.then("the end", [] {});
    run(script);
    EXPECT_EQ(take_log(), (Lines{"command 32788 from 0"}));
}

// --- Dialogs -------------------------------------------------------------------------------------

INT_PTR CALLBACK EndingProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        log_lines.push_back("init " + std::to_string(lparam));
        return TRUE;
    }
    if (message == WM_COMMAND) {
        log_lines.push_back("command " + std::to_string(LOWORD(wparam)));
        EndDialog(dialog, 40 + LOWORD(wparam));
        return TRUE;
    }
    return FALSE;
}

INT_PTR open_dialog(HWND owner, int id = IDD_ABOUT, DLGPROC procedure = EndingProc) {
    return DialogBoxParamA(nullptr, MAKEINTRESOURCEA(static_cast<WORD>(id)), owner, procedure, 5);
}

TEST_F(Windows, DialogsEndByKeyButtonAndCloseBox) {
    const std::pair<const char*, std::function<void(HWND)>> ways[] = {
        {"command 1", [](HWND dialog) { user::press(dialog, "Return"); }},
        {"command 1", [](HWND dialog) { user::click_control(dialog, IDOK); }},
        {"command 2", [](HWND dialog) { user::press(dialog, "Esc"); }},
        {"command 2", [](HWND dialog) { user::close(dialog); }},
    };
    for (const auto& [line, way] : ways) {
        INT_PTR result = 0;
        Answers()
            .dialog("About",
                    [&](HWND) { // its owner must not receive these
                        user::press(window_, "Ctrl+E");
                        user::click(window_, 9, 9);
                    })
            .dialog("About", way)
            .gone("About")
            .during([&] { result = open_dialog(window_); });
        EXPECT_EQ(take_log(), (Lines{"init 5", line}));
        EXPECT_EQ(result, std::strcmp(line, "command 1") == 0 ? 41 : 42);
    }
}

TEST_F(Windows, ADialogIsDestroyedWithItsOwnerAndOtherWindowsStayActive) {
    HWND other = show_other();
    settle();
    take_log();
    Answers()
        .dialog("About", [&](HWND) { user::click(other, 5, 6); })
        .then([&] { InvalidateRect(other, nullptr, FALSE); })
        .then([&] { DestroyWindow(window_); })
        .gone("About")
        .during([&] { EXPECT_NE(open_dialog(window_), IDOK); });
    EXPECT_FALSE(IsWindow(window_));
    EXPECT_EQ(take_log(), (Lines{"init 5", "left 1 at 5,6", "paint", "destroy"}));
    DestroyWindow(other);
}

TEST_F(Windows, TwoDialogsEndInAnyOrderAndBlockedWindowsGetNoInput) {
    HWND other = show_other();
    settle();
    take_log();
    on_message = [](HWND window, UINT message, WPARAM) -> LRESULT {
        return message == WM_USER ? open_dialog(window, IDD_MESSAGE) : 0;
    };
    user::click(window_, 9, 9); // queued before the first dialog opens
    user::close(window_);
    Answers()
        .dialog("About", [&](HWND) { PostMessageA(other, WM_USER, 0, 0); })
        .dialog("Dialog", [](HWND) { user::click_control(user::find_window("About"), IDOK); })
        .gone("About")
        .then([&] { user::click(window_, 8, 8); }) // its owner gets input again
        .press("Dialog", "Return")
        .gone("Dialog")
        .during([&] { open_dialog(window_); });
    EXPECT_EQ(take_log(),
              (Lines{"init 5", "user 0", "init 5", "command 1", "left 1 at 8,8", "command 1"}));
    DestroyWindow(other);
}

// Logs the notifications of the population dialog's controls.
INT_PTR CALLBACK ControlsProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_INITDIALOG:
        SendMessageA(GetDlgItem(dialog, IDC_PCROSS), TBM_SETRANGE, FALSE, MAKELPARAM(0, 100));
        SendMessageA(GetDlgItem(dialog, IDC_PCROSS), TBM_SETLINESIZE, 0, 5);
        SendMessageA(GetDlgItem(dialog, IDC_PCROSS), TBM_SETPAGESIZE, 0, 10);
        SendMessageA(GetDlgItem(dialog, IDC_PCROSS), TBM_SETPOS, TRUE, 50);
        SendMessageA(GetDlgItem(dialog, IDC_TURTLES_SPIN), UDM_SETBUDDY,
                     reinterpret_cast<WPARAM>(GetDlgItem(dialog, IDC_TURTLES)), 0);
        SetDlgItemTextA(dialog, IDC_TURTLES, "48");
        return TRUE;
    case WM_HSCROLL:
        EXPECT_EQ(GetDlgCtrlID(reinterpret_cast<HWND>(lparam)), IDC_PCROSS);
        log_lines.push_back(
            std::to_string(LOWORD(wparam)) + " at " +
            std::to_string(SendMessageA(reinterpret_cast<HWND>(lparam), TBM_GETPOS, 0, 0)));
        return TRUE;
    case WM_NOTIFY:
        if (reinterpret_cast<const NMHDR*>(lparam)->code == UDN_DELTAPOS) {
            log_lines.push_back("change " +
                                std::to_string(reinterpret_cast<const NMUPDOWN*>(lparam)->iDelta));
        }
        return FALSE;
    case WM_COMMAND:
        if (LOWORD(wparam) == IDOK) {
            EndDialog(dialog, IDOK);
        }
        return TRUE;
    default:
        return FALSE;
    }
}

// Wine reports the end of a drag twice: on the button's release and on the loss of the mouse
// capture.
Lines mouse_lines() {
    Lines lines = take_log();
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

TEST_F(Windows, SlidersAndArrowsNotifyAsOnWindows) {
    const auto dialog = [] { return user::find_window("Population Description"); };
    user::Script script(end_script);
    script.await("the dialog", [&] { return dialog() != nullptr; });
    const std::pair<const char*, Lines> keys[] = {
        {"Right", {"1 at 55", "8 at 55"}}, {"Up", {"0 at 50", "8 at 50"}},
        {"PgUp", {"2 at 40", "8 at 40"}},  {"PgDown", {"3 at 50", "8 at 50"}},
        {"Home", {"6 at 0", "8 at 0"}},    {"End", {"7 at 100", "8 at 100"}},
    };
    for (const auto& [key, lines] : keys) {
        script.then(key, [&, k = key] {
            user::focus(dialog(), IDC_PCROSS);
            user::press(dialog(), k);
        });
        script.then("its lines", [l = &lines] { EXPECT_EQ(take_log(), *l); });
    }
    script.then("drag", [&] { user::drag(dialog(), IDC_PCROSS, 20); });
    script.then("its lines", [&] {
        const Lines lines = mouse_lines();
        ASSERT_GE(lines.size(), 3U);
        EXPECT_EQ(lines.back(), "8 at " + std::to_string(user::position(dialog(), IDC_PCROSS)));
        EXPECT_EQ(lines[lines.size() - 2].substr(0, 2), "4 ");
        EXPECT_EQ(lines.front().substr(0, 2), "5 ");
        EXPECT_NEAR(user::position(dialog(), IDC_PCROSS), 20, 3);
    });
    script.then("arrows", [&] {
        user::click_arrow(dialog(), IDC_TURTLES_SPIN, true);
        user::click_arrow(dialog(), IDC_TURTLES_SPIN, false);
        user::focus(dialog(), IDC_TURTLES);
        user::press(dialog(), "Up");
    });
    script.then("their lines", [] {
        EXPECT_EQ(take_log(), (Lines{"change -1", "change 1", "change -1"}));
    });
    script.then("type", [&] { user::type(dialog(), IDC_TURTLES, "12345678901234567890"); });
    script.then("read", [&] {
        char cut[8];
        EXPECT_EQ(GetDlgItemTextA(dialog(), IDC_TURTLES, cut, sizeof cut), 7U);
        EXPECT_STREQ(cut, "1234567");
        EXPECT_EQ(GetDlgItem(dialog(), 4711), nullptr);
        user::hold_arrow(dialog(), IDC_TURTLES_SPIN, true);
        user::press(dialog(), "Return"); // while the arrow is held
    });
    script.start();
    EXPECT_EQ(open_dialog(window_, IDD_POPULATION, ControlsProc), IDOK);
    settle();
}

} // namespace
