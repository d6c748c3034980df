// Slider input that differs from Windows or that only toolkit events can simulate.
#include "frames/dialog.h"
#include "resources/resource.h"
#include "tests/contract/test_windows.h"

#include <QPointer>
#include <QSlider>
#include <QTest>
#include <QWheelEvent>

namespace {

using namespace pelmora_test;

INT_PTR CALLBACK SlidersProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        for (const int id : {IDC_PCROSS, IDC_PMUTATE}) {
            SendMessageA(GetDlgItem(dialog, id), TBM_SETRANGE, FALSE, MAKELPARAM(0, 100));
            SendMessageA(GetDlgItem(dialog, id), TBM_SETLINESIZE, 0, 5);
            SendMessageA(GetDlgItem(dialog, id), TBM_SETPAGESIZE, 0, 10);
            SendMessageA(GetDlgItem(dialog, id), TBM_SETPOS, TRUE, 50);
        }
        return TRUE;
    }
    if (message == WM_HSCROLL) {
        HWND slider = reinterpret_cast<HWND>(lparam);
        log_lines.push_back(std::to_string(LOWORD(wparam)) + " at " +
                            std::to_string(SendMessageA(slider, TBM_GETPOS, 0, 0)));
    } else if (message == WM_COMMAND) {
        log_lines.push_back("command " + std::to_string(LOWORD(wparam)));
        EndDialog(dialog, IDOK);
    }
    return FALSE;
}

void turn_wheel(QSlider* slider, int eighths) {
    const QPointF at(slider->rect().center());
    QWheelEvent event(at, slider->mapToGlobal(at), {}, {0, eighths}, {}, {}, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(slider, &event);
}

void press_as_x11(QSlider* slider, QEvent::Type type, quint64 time) {
    QKeyEvent event(type, Qt::Key_Left, {}, 113, 0xFF51, 0);
    event.setTimestamp(time);
    QApplication::sendEvent(slider, &event);
}

// Some of the moves are reported by timers, late on a busy machine.
void await_lines(std::size_t count) {
    EXPECT_TRUE(QTest::qWaitFor([count] { return log_lines.size() == count; }, 20'000));
}

TEST_F(Windows, SlidersReportTheEndOfEveryMove) {
    QPointer<QSlider> slider;
    user::Script script(end_script);
    const auto step = [&](const char* name, const std::function<void()>& action,
                          const Lines& lines) {
        script.then(name, [&slider, action] {
            HWND dialog = user::find_window("Population Description");
            slider = qobject_cast<QSlider*>(
                platform::window_of(GetDlgItem(dialog, IDC_PCROSS))->widget());
            action();
        });
        script.then(name, [name, lines] { EXPECT_EQ(take_log(), lines) << name; });
    };
    script.await("the dialog",
                 [] { return user::find_window("Population Description") != nullptr; });
    step("the wheel over a slider without the focus", [&] { turn_wheel(slider, 120); }, {});
    step("half notches",
         [&] {
             slider->setFocus();
             turn_wheel(slider, 60);
             turn_wheel(slider, 60);
             turn_wheel(slider, -120);
         },
         {"1 at 55", "8 at 55", "0 at 50", "8 at 50"});
    step("another button", [&] { QTest::mouseClick(slider, Qt::MiddleButton, {}, {9, 9}); }, {});
    step("a key that X11 repeats",
         [&] {
             press_as_x11(slider, QEvent::KeyPress, 1000);
             press_as_x11(slider, QEvent::KeyRelease, 1500);
             press_as_x11(slider, QEvent::KeyPress, 1500);
             press_as_x11(slider, QEvent::KeyRelease, 1540);
             await_lines(3);
         },
         {"0 at 45", "0 at 40", "8 at 40"});
    step("the focus is lost",
         [&] {
             QTest::keyPress(slider, Qt::Key_Right);
             QTest::keyClick(slider, Qt::Key_Tab);
         },
         {"1 at 45", "8 at 45"});
    step("the held groove",
         [&] {
             QTest::mousePress(slider, Qt::LeftButton, {}, {slider->width() * 7 / 10, 9});
             await_lines(3);
             QTest::mouseRelease(slider, Qt::LeftButton, {}, {slider->width() * 7 / 10, 9});
         },
         {"3 at 55", "3 at 65", "3 at 75", "8 at 75"});
    step("the dialog ends",
         [&] {
             QTest::keyPress(slider, Qt::Key_Left);
             QTest::keyClick(slider, Qt::Key_Return);
         },
         {"0 at 70", "8 at 70", "command 1"});
    script.start();
    EXPECT_EQ(DialogBoxParamA(nullptr, MAKEINTRESOURCEA(IDD_POPULATION), window_, SlidersProc, 0),
              IDOK);
    settle();
}

} // namespace
