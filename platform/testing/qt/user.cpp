#include "platform/testing/user.h"
#include "platform/testing/user_platform.h"

#include "frames/dialog.h"
#include "frames/frame.h"
#include "platform/testing/qt/user_screen.h"
#include "user/message_loop.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QCompleter>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QInputMethodEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPrintDialog>
#include <QPushButton>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace user {

namespace {

using platform::window_of;

QWidget* widget_of(HWND window) {
    platform::Window* found = window_of(window);
    return found != nullptr ? found->widget() : nullptr;
}

QWidget* client_of(HWND window) {
    auto* frame = dynamic_cast<platform::Frame*>(widget_of(window));
    return frame != nullptr ? frame->client() : widget_of(window);
}

QWidget* control_widget(HWND dialog, int control) {
    return widget_of(GetDlgItem(dialog, control));
}

HWND handle_of(QWidget* widget) {
    const platform::Window* window = platform::window_of_widget(widget);
    return window != nullptr ? window->handle() : nullptr;
}

bool titled(const QWidget* widget, const std::string& title) {
    return widget->isVisible() && widget->windowTitle().toStdString() == title;
}

Qt::KeyboardModifiers held(unsigned modifiers) {
    Qt::KeyboardModifiers result;
    result.setFlag(Qt::ShiftModifier, (modifiers & shift) != 0);
    result.setFlag(Qt::ControlModifier, (modifiers & control) != 0);
    result.setFlag(Qt::AltModifier, (modifiers & alt) != 0);
    return result;
}

bool on_wayland() {
    return QGuiApplication::platformName().startsWith("wayland");
}

// Mouse events are sent to the native window, so that windows blocked by a dialog ignore them.
void click_widget(QWidget* widget, const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
                  Qt::KeyboardModifiers modifiers = {}) {
    QWidget* top = widget->window();
    QTest::mouseClick(top->windowHandle(), button, modifiers, widget->mapTo(top, at));
}

Qt::MouseButton mouse_button(Button button) {
    return button == Button::left ? Qt::LeftButton : Qt::RightButton;
}

QWidget* arrow_of(HWND dialog, int control, bool up) {
    return control_widget(dialog, control)->findChildren<QToolButton*>().at(up ? 0 : 1);
}

// The label of an action without mnemonic and shortcut.
std::string label(const QAction* action) {
    return action->text().section('\t', 0, 0).remove('&').toStdString();
}

QAction* find_action(const QWidget* holder, const std::string& name) {
    for (QAction* action : holder->actions()) {
        if (label(action) == name) {
            return action;
        }
    }
    return nullptr;
}

// The newest visible toolkit dialog of this type, or null.
template <typename Kind>
Kind* open_dialog() {
    Kind* newest = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<Kind*>(widget);
        if (dialog != nullptr && dialog->isVisible()) {
            newest = dialog;
        }
    }
    return newest;
}

QDialog* open_system_dialog() {
    if (auto* dialog = open_dialog<QFileDialog>()) {
        return dialog;
    }
    return open_dialog<QPrintDialog>();
}

// Enters a name by an input method event, as key events cannot make every character.
void enter(QLineEdit* field, const std::string& name) {
    field->setFocus(Qt::MouseFocusReason);
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QInputMethodEvent event;
    event.setCommitString(QString::fromStdString(name));
    QApplication::sendEvent(field, &event);
    if (field->completer() != nullptr) {
        field->completer()->popup()->hide();
    }
}

void accept_dialog(const QDialog* dialog) {
    for (QPushButton* button : dialog->findChildren<QPushButton*>()) {
        if (button->isDefault()) {
            click_widget(button, button->rect().center());
            return;
        }
    }
}

} // namespace

HWND find_window(const std::string& title) {
    HWND newest = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        const HWND handle = titled(widget, title) ? handle_of(widget) : nullptr;
        newest = std::max(newest, handle); // handles are ascending
    }
    return newest;
}

int count_windows(const std::string& title) {
    int count = 0;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        count += titled(widget, title) && handle_of(widget) != nullptr ? 1 : 0;
    }
    return count;
}

COLORREF pixel(HWND window, int x, int y) {
    return platform::color_of(grab(client_of(window), QRect(x, y, 1, 1)).pixel(0, 0));
}

std::vector<std::uint32_t> pixels(HWND window, const RECT& area) {
    const QImage image = grab(client_of(window), QRect(area.left, area.top, area.right - area.left,
                                                       area.bottom - area.top));
    std::vector<std::uint32_t> all;
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
        all.insert(all.end(), row, row + image.width());
    }
    return all;
}

std::string text(HWND window, int control) {
    char buffer[1024];
    GetDlgItemTextA(window, control, buffer, sizeof buffer);
    return buffer;
}

bool checked(HWND window, int control) {
    return qobject_cast<QAbstractButton*>(control_widget(window, control))->isChecked();
}

int position(HWND dialog, int control) {
    return qobject_cast<QSlider*>(control_widget(dialog, control))->sliderPosition();
}

std::vector<std::string> menu_lines(HWND window) {
    std::vector<std::string> lines;
    const auto* frame = dynamic_cast<platform::Frame*>(widget_of(window));
    for (const QAction* popup : frame->menu_bar()->actions()) {
        lines.push_back(popup->text().toStdString() + ":");
        for (const QAction* entry : popup->menu()->actions()) {
            const std::string shown =
                entry->isSeparator() ? "-" : entry->text().replace('\t', " | ").toStdString();
            lines.push_back(entry->isEnabled() ? shown : "[" + shown + "]");
        }
    }
    return lines;
}

bool programs_place_windows() {
    return !on_wayland();
}

bool clipboard_forgets() {
    return !on_wayland();
}

bool save_picture(HWND window, const std::string& path) {
    return save_grab(widget_of(window), path);
}

void press(HWND window, const std::string& keys) {
    const QKeyCombination combination = QKeySequence::fromString(QString::fromStdString(keys))[0];
    QTest::keyClick(widget_of(window)->windowHandle(), combination.key(),
                    combination.keyboardModifiers());
}

void hold(HWND window, const std::string& keys, int repeats) {
    const QKeyCombination combination = QKeySequence::fromString(QString::fromStdString(keys))[0];
    QWindow* top = widget_of(window)->windowHandle();
    QTest::keyPress(top, combination.key(), combination.keyboardModifiers());
    for (int i = 0; i < repeats; ++i) {
        qt_handleKeyEvent(top, QEvent::KeyPress, combination.key(), combination.keyboardModifiers(),
                          {}, true);
    }
}

void let_go(HWND window, const std::string& keys) {
    const QKeyCombination combination = QKeySequence::fromString(QString::fromStdString(keys))[0];
    QTest::keyRelease(widget_of(window)->windowHandle(), combination.key(),
                      combination.keyboardModifiers());
}

void click(HWND window, int x, int y, Button button, unsigned modifiers) {
    click_widget(client_of(window), QPoint(x, y), mouse_button(button), held(modifiers));
}

void double_click(HWND window, int x, int y, unsigned modifiers) {
    QWidget* client = client_of(window);
    QWidget* top = client->window();
    QTest::mouseDClick(top->windowHandle(), Qt::LeftButton, held(modifiers),
                       client->mapTo(top, QPoint(x, y)));
}

bool choose(HWND window, const std::string& menu, const std::string& entry) {
    QMenuBar* bar = dynamic_cast<platform::Frame*>(widget_of(window))->menu_bar();
    QAction* popup = find_action(bar, menu);
    if (popup == nullptr) {
        return false;
    }
    click_widget(bar, bar->actionGeometry(popup).center());
    QAction* action = find_action(popup->menu(), entry);
    if (action == nullptr || !action->isEnabled() || !popup->menu()->isVisible()) {
        popup->menu()->close();
        return false;
    }
    click_widget(popup->menu(), popup->menu()->actionGeometry(action).center());
    return true;
}

void click_control(HWND window, int control, Button button) {
    QWidget* widget = control_widget(window, control);
    click_widget(widget, QPoint(widget->width() / 2, widget->height() - 4), mouse_button(button));
}

void click_arrow(HWND dialog, int control, bool up) {
    QWidget* arrow = arrow_of(dialog, control, up);
    click_widget(arrow, arrow->rect().center());
}

void hold_arrow(HWND dialog, int control, bool up) {
    QWidget* arrow = arrow_of(dialog, control, up);
    QTest::mousePress(arrow, Qt::LeftButton);
}

void focus(HWND window, int control) {
    control_widget(window, control)->setFocus(Qt::MouseFocusReason);
}

void type(HWND window, int control, const std::string& text) {
    auto* edit = qobject_cast<QLineEdit*>(control_widget(window, control));
    edit->setFocus(Qt::MouseFocusReason);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, QString::fromStdString(text));
}

void drag(HWND dialog, int control, int to) {
    auto* slider = qobject_cast<QSlider*>(control_widget(dialog, control));
    QStyleOptionSlider option;
    option.initFrom(slider);
    option.orientation = Qt::Horizontal;
    option.minimum = slider->minimum();
    option.maximum = slider->maximum();
    option.sliderPosition = slider->sliderPosition();
    option.tickPosition = slider->tickPosition();
    const QRect thumb = slider->style()->subControlRect(QStyle::CC_Slider, &option,
                                                        QStyle::SC_SliderHandle, slider);
    const QRect groove = slider->style()->subControlRect(QStyle::CC_Slider, &option,
                                                         QStyle::SC_SliderGroove, slider);
    const int way = QStyle::sliderPositionFromValue(slider->minimum(), slider->maximum(), to,
                                                    groove.width() - thumb.width());
    const QPoint end(groove.left() + way + thumb.width() / 2, thumb.center().y());
    QWidget* top = slider->window();
    QWindow* window = top->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, {}, slider->mapTo(top, thumb.center()));
    QTest::mouseMove(window, slider->mapTo(top, end));
    QTest::mouseRelease(window, Qt::LeftButton, {}, slider->mapTo(top, end));
}

void resize(HWND window, int width, int height) {
    QWidget* frame = widget_of(window);
    resize_on_screen(frame, QSize(width, height + frame->height() - client_of(window)->height()));
}

void close(HWND window) {
    widget_of(window)->close();
}

std::string system_dialog() {
    const QDialog* dialog = open_system_dialog();
    return dialog != nullptr ? dialog->windowTitle().toStdString() : "";
}

std::vector<std::string> listed_files() {
    const auto* list = open_dialog<QFileDialog>()->findChild<QAbstractItemView*>("listView");
    std::vector<std::string> names;
    for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row) {
        names.push_back(
            list->model()->index(row, 0, list->rootIndex()).data().toString().toStdString());
    }
    return names;
}

std::string question() {
    const auto* box = open_dialog<QMessageBox>();
    return box != nullptr ? box->text().toStdString() : "";
}

std::string copied(const std::string& format) {
    const QMimeData* offered = QApplication::clipboard()->mimeData();
    return offered != nullptr ? offered->data(QString::fromStdString(format)).toStdString() : "";
}

bool save_system_dialog_picture(const std::string& path) {
    return save_grab(open_system_dialog(), path);
}

void choose_file(const std::string& name) {
    auto* dialog = open_dialog<QFileDialog>();
    enter(dialog->findChild<QLineEdit*>("fileNameEdit"), name);
    accept_dialog(dialog);
}

void accept_system_dialog() {
    accept_dialog(open_system_dialog());
}

void choose_filter(int index) {
    auto* box = open_dialog<QFileDialog>()->findChild<QComboBox*>("fileTypeCombo");
    box->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(box, Qt::Key_Home);
    for (int i = 0; i < index; ++i) {
        QTest::keyClick(box, Qt::Key_Down);
    }
}

void print_to_file(const std::string& path) {
    auto* dialog = open_dialog<QPrintDialog>();
    auto* printers = dialog->findChild<QComboBox*>("printers");
    printers->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(printers, Qt::Key_End); // the last entry prints to a file
    enter(dialog->findChild<QLineEdit*>("filename"), path);
    accept_dialog(dialog);
}

void answer(const std::string& button) {
    auto* box = open_dialog<QMessageBox>();
    for (QAbstractButton* candidate : box->buttons()) {
        if (candidate->text().remove('&').toStdString() == button) {
            click_widget(candidate, candidate->rect().center());
        }
    }
}

void answer_with_return() {
    QTest::keyClick(open_dialog<QMessageBox>()->windowHandle(), Qt::Key_Return);
}

void cancel_system_dialog() {
    QTest::keyClick(open_system_dialog()->windowHandle(), Qt::Key_Escape);
}

const void* innermost_dialog() {
    return QApplication::activeModalWidget();
}

bool run_queued_action() {
    return false; // no queue: actions send their events at once
}

struct IdleTimer::State {
    QTimer timer;
    std::function<void()> callback;
    const QWidget* awaited = nullptr;
    QElapsedTimer waiting;

    State() {
        constexpr int kPause = 5; // milliseconds
        timer.setInterval(kPause);
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] {
            timer.start(); // first, as a callback may run the loop of a dialog
            if (platform::message_queue_idle() && focus_settled()) {
                const auto call = callback; // a copy: the call may destroy this timer
                call();
            }
        });
    }

    // Waits until the front window has the focus, which it gets a little after it is shown. Without
    // a window manager it may never get it, so there is a time limit.
    bool focus_settled() {
        constexpr int kTimeout = 500; // milliseconds
        const QWidget* dialog = QApplication::activeModalWidget();
        const QWidget* active = QApplication::activeWindow();
        if (active != nullptr ? dialog == nullptr || dialog == active : !any_visible()) {
            waiting.invalidate();
            return true;
        }
        if (!waiting.isValid() || dialog != awaited) {
            awaited = dialog;
            waiting.start();
        }
        return waiting.hasExpired(kTimeout);
    }

    static bool any_visible() {
        const QWidgetList all = QApplication::topLevelWidgets();
        return std::any_of(all.begin(), all.end(),
                           [](const QWidget* widget) { return widget->isVisible(); });
    }
};

IdleTimer::IdleTimer(std::function<void()> callback) : state_(std::make_unique<State>()) {
    state_->callback = std::move(callback);
    state_->timer.start();
}

IdleTimer::~IdleTimer() = default;

} // namespace user
