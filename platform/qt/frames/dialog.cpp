#include "frames/dialog.h"

#include "controls/control_styles.h"
#include "controls/factory.h"
#include "frames/frame.h"
#include "frames/modal_loop.h"
#include "gdi/text.h"
#include "resources/resources.h"
#include "user/message_loop.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFontMetrics>
#include <QLineEdit>
#include <QScreen>
#include <QSlider>
#include <QStyle>

#include <algorithm>
#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr std::uint32_t kSizeBorder = 0x00040000; // WS_THICKFRAME

// Converts dialog units to pixels. A unit is a fraction of the font's average character: 1/4 of its
// width, 1/8 of its height. The font is the desktop's, so positions and sizes scale with it.
class DialogUnits {
  public:
    DialogUnits(const DialogTemplate& design, const QFont& font) {
        const QFontMetrics metrics(font);
        const QString letters =
            QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
        across_ = (metrics.horizontalAdvance(letters) / 26 + 1) / 2;
        down_ = metrics.height();
        // The template was designed with another font. Where a text is wider in this one the unit
        // grows, so that no label is cut off and nothing overlaps.
        for (const DialogItem& item : design.items) {
            const int text = metrics.horizontalAdvance(to_qstring(item.text.text).remove('&')) +
                             (is_radio(item) ? mark_width() : 0);
            if ((is_line(item) || is_radio(item)) && item.width > 0) {
                across_ = std::max(across_, (text * 4 + item.width - 1) / item.width);
            }
        }
    }
    QRect rect(int x, int y, int width, int height) const {
        return {x * across_ / 4, y * down_ / 8, width * across_ / 4, height * down_ / 8};
    }

  private:
    // A label of one line.
    static bool is_line(const DialogItem& item) {
        constexpr int kTwoLines = 16;
        return item.window_class.number == kStaticClass && item.height < kTwoLines;
    }
    static bool is_radio(const DialogItem& item) {
        return item.window_class.number == kButtonClass && (item.style & 0xFU) == kAutoRadioButton;
    }
    // The width of a radio button's indicator and the gap to its text.
    static int mark_width() {
        const QStyle* style = QApplication::style();
        return style->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) +
               style->pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
    }

    int across_, down_;
};

// The desktop's font, made smaller until the dialog fits the screen.
QFont dialog_font(const DialogTemplate& design) {
    const QSize room = QGuiApplication::primaryScreen()->availableSize() - usual_frame();
    return shrunk_to_fit(QApplication::font(), [&](const QFont& font) {
        const QSize size = DialogUnits(design, font).rect(0, 0, design.width, design.height).size();
        return size.width() <= room.width() && size.height() <= room.height();
    });
}

QWidget* widget_of(HWND handle) {
    const Window* window = window_of(handle);
    return window != nullptr ? window->widget() : nullptr;
}

} // namespace

void DialogWidget::reject() {
    post(dialog_, WM_COMMAND, MAKEWPARAM(IDCANCEL, 0), 0);
}

void DialogWidget::closeEvent(QCloseEvent* event) {
    event->ignore();
    reject();
}

DialogWindow::DialogWindow(HWND owner, DLGPROC procedure, const DialogTemplate& design)
    : owner_(owner), procedure_(procedure), widget_(new DialogWidget(widget_of(owner), handle())) {
    extra().resize(DWLP_USER + sizeof(LONG_PTR));
    widget_->setFont(dialog_font(design));
    const DialogUnits units(design, widget_->font());
    const QRect area = units.rect(design.x, design.y, design.width, design.height);
    widget_->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                            Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    widget_->setWindowModality(Qt::WindowModal);
    widget_->setWindowTitle(to_qstring(design.title));
    if (const QWidget* owner_widget = widget_of(owner)) {
        widget_->move(owner_widget->mapToGlobal(area.topLeft()));
    }
    if ((design.style & kSizeBorder) != 0) {
        widget_->resize(area.size());
    } else {
        widget_->setFixedSize(area.size());
    }
    add_controls(design);
}

DialogWindow::~DialogWindow() {
    dismantle();
}

void DialogWindow::add_controls(const DialogTemplate& design) {
    const DialogUnits units(design, widget_->font());
    for (const DialogItem& item : design.items) {
        add_control(widget_->controls(), item, units.rect(item.x, item.y, item.width, item.height),
                    handle());
    }
}

QWidget* DialogWindow::first_tab_stop() const {
    const auto& controls = widget_->controls().all();
    const auto found =
        std::find_if(controls.begin(), controls.end(), [](const std::shared_ptr<Control>& c) {
            return c->widget()->isEnabled() && (c->widget()->focusPolicy() & Qt::TabFocus) != 0;
        });
    return found != controls.end() ? (*found)->widget() : nullptr;
}

LRESULT DialogWindow::receive(UINT message, WPARAM wparam, LPARAM lparam) {
    const INT_PTR handled = procedure_(handle(), message, wparam, lparam);
    if (handled == FALSE && message == WM_CLOSE) {
        post(handle(), WM_COMMAND, MAKEWPARAM(IDCANCEL, 0), 0);
    }
    if (ended_) {
        leave_screen();
    }
    // TRUE from a dialog procedure means "handled" and is the result of WM_INITDIALOG only.
    return message == WM_INITDIALOG ? handled : 0;
}

// Hides an ended dialog and unblocks its owner at once, even while the loop of a dialog that was
// opened later is still nested in its own.
void DialogWindow::leave_screen() {
    if (!std::exchange(running_, false)) {
        return;
    }
    widget_->hide();
    if (Window* owner = window_of(owner_)) {
        owner->disown(handle());
        owner->unblock();
        owner->widget()->activateWindow();
    }
    post(nullptr, WM_NULL, 0, 0); // wakes the dialog's loop
}

void DialogWindow::dismantle() {
    if (widget_ == nullptr) {
        return;
    }
    leave_screen();
    widget_->deleteLater();
    widget_ = nullptr;
}

void DialogWindow::end(INT_PTR result) {
    ended_ = true;
    result_ = result;
}

INT_PTR DialogWindow::run(LPARAM parameter) {
    running_ = true;
    if (Window* owner = window_of(owner_)) {
        owner->own(handle());
        owner->block();
    }
    QWidget* focus = first_tab_stop();
    const Window* focused = window_of_widget(focus);
    const LRESULT default_focus = send_message(
        handle(), WM_INITDIALOG,
        reinterpret_cast<WPARAM>(focused != nullptr ? focused->handle() : nullptr), parameter);
    if (running_) {
        if (default_focus != FALSE && focus != nullptr) {
            focus->setFocus(Qt::TabFocusReason);
        }
        widget_->show();
        run_modal_loop([this] { return running_; });
    }
    if (IsWindow(handle())) {
        DestroyWindow(handle());
    }
    return result_;
}

Controls* DialogWindow::controls() {
    return widget_ != nullptr ? &widget_->controls() : nullptr;
}

void DialogWindow::forget_children() {
    if (const Controls* all = controls()) {
        all->forget();
    }
}

namespace {

DialogWindow* dialog_of(HWND handle) {
    return dynamic_cast<DialogWindow*>(window_of(handle));
}

} // namespace

} // namespace platform

using namespace platform;

INT_PTR DialogBoxParamA(HINSTANCE, LPCSTR name, HWND owner, DLGPROC procedure, LPARAM parameter) {
    const std::uint16_t id = resource_id(name);
    const auto design = read_dialog(program_resources().find(ResourceType::dialog, id));
    if (!design) {
        resource_fault("dialog", id);
    }
    const auto dialog = std::make_shared<DialogWindow>(owner, procedure, *design);
    keep_window(dialog);
    return dialog->run(parameter);
}

BOOL EndDialog(HWND handle, INT_PTR result) {
    DialogWindow* dialog = dialog_of(handle);
    if (dialog == nullptr) {
        return FALSE;
    }
    dialog->end(result);
    return TRUE;
}
