#include "controls/trackbar.h"

#include "controls/control_styles.h"
#include "resources/resources.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

using Action = QAbstractSlider::SliderAction;

// The action of a key; SliderNoAction for keys that the slider does not handle.
Action key_action(int key) {
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return QAbstractSlider::SliderSingleStepSub;
    case Qt::Key_Right:
    case Qt::Key_Down:
        return QAbstractSlider::SliderSingleStepAdd;
    case Qt::Key_PageUp:
        return QAbstractSlider::SliderPageStepSub;
    case Qt::Key_PageDown:
        return QAbstractSlider::SliderPageStepAdd;
    case Qt::Key_Home:
        return QAbstractSlider::SliderToMinimum;
    case Qt::Key_End:
        return QAbstractSlider::SliderToMaximum;
    default:
        return QAbstractSlider::SliderNoAction;
    }
}

WORD action_code(int action) {
    switch (action) {
    case QAbstractSlider::SliderSingleStepSub:
        return TB_LINEUP;
    case QAbstractSlider::SliderSingleStepAdd:
        return TB_LINEDOWN;
    case QAbstractSlider::SliderPageStepSub:
        return TB_PAGEUP;
    case QAbstractSlider::SliderPageStepAdd:
        return TB_PAGEDOWN;
    case QAbstractSlider::SliderToMinimum:
        return TB_TOP;
    case QAbstractSlider::SliderToMaximum:
        return TB_BOTTOM;
    default:
        return TB_THUMBTRACK;
    }
}

constexpr int kTicks = 5; // pixels below the groove, as the toolkit reserves

} // namespace

TrackbarWidget::TrackbarWidget(QWidget* parent, std::function<void(WORD)> notify, bool tooltips)
    : QSlider(Qt::Horizontal, parent), notify_(std::move(notify)), tooltips_(tooltips) {
    setFocusPolicy(Qt::TabFocus); // mousePressEvent() adds the left button
    connect(this, &QAbstractSlider::actionTriggered, this, &TrackbarWidget::report);
}

// Styles draw the ticks at the bottom of the slider's rectangle. It is reduced to the height that
// the slider needs, so that the ticks are next to the groove, and placed so that the groove is
// level with the label beside it.
void TrackbarWidget::initStyleOption(QStyleOptionSlider* option) const {
    QSlider::initStyleOption(option);
    const int thick = style()->pixelMetric(QStyle::PM_SliderThickness, option, this) + kTicks;
    const QSize whole =
        style()->sizeFromContents(QStyle::CT_Slider, option, QSize(width(), thick), this);
    const int needed = std::min(height(), whole.height());
    const int above = std::clamp(height() / 4 - (needed - kTicks) / 2, 0, height() - needed);
    option->rect = QRect(0, above, width(), needed);
    option->state.setFlag(QStyle::State_Sunken, isSliderDown());
}

void TrackbarWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOptionSlider option;
    initStyleOption(&option);
    if (tickPosition() != NoTicks) {
        draw_ticks(painter, option.rect.bottom());
    }
    option.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
    style()->drawComplexControl(QStyle::CC_Slider, &option, &painter, this);
}

// Styles draw ticks in a colour from their cache, which may be dark on a dark palette.
void TrackbarWidget::draw_ticks(QPainter& painter, int bottom) const {
    QColor faint = palette().color(QPalette::WindowText);
    faint.setAlphaF(0.45F);
    painter.setPen(faint);
    const QRect groove = part(QStyle::SC_SliderGroove);
    const int thumb = part(QStyle::SC_SliderHandle).width();
    for (int value = minimum(); value <= maximum(); value += std::max(1, tickInterval())) {
        const int x =
            groove.left() + thumb / 2 +
            QStyle::sliderPositionFromValue(minimum(), maximum(), value, groove.width() - thumb);
        painter.drawLine(x, bottom - kTicks + 1, x, bottom);
    }
}

QRect TrackbarWidget::part(QStyle::SubControl which) const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_Slider, &option, which, this);
}

int TrackbarWidget::position_at(int thumb_left) const {
    const QRect groove = part(QStyle::SC_SliderGroove);
    const int way = groove.width() - part(QStyle::SC_SliderHandle).width();
    return QStyle::sliderValueFromPosition(minimum(), maximum(), thumb_left - groove.left(), way);
}

void TrackbarWidget::report(int action) {
    tracking_ = true;
    show_position();
    notify_(action_code(action));
}

void TrackbarWidget::end_tracking() {
    const bool dragged = isSliderDown();
    held_key_ = 0;
    release_timer_.stop();
    page_timer_.stop();
    setSliderDown(false);
    if (!std::exchange(tracking_, false) && !dragged) {
        return;
    }
    if (dragged) {
        notify_(TB_THUMBPOSITION);
    }
    notify_(TB_ENDTRACK);
}

void TrackbarWidget::show_position() {
    if (!tooltips_) {
        return;
    }
    if (value_ == nullptr) {
        value_ = new QLabel(window());
        value_->setFont(QToolTip::font());
        value_->setPalette(QToolTip::palette());
        value_->setAutoFillBackground(true);
        value_->setFrameStyle(QFrame::Box | QFrame::Plain);
        value_->setAttribute(Qt::WA_TransparentForMouseEvents);
        connect(this, &QObject::destroyed, value_.data(), &QObject::deleteLater);
    }
    constexpr int kShown = 800; // milliseconds
    value_timer_.start(kShown, this);
    value_->setNum(sliderPosition());
    value_->adjustSize();
    const QRect thumb = part(QStyle::SC_SliderHandle);
    const QPoint top(mapTo(window(), QPoint(thumb.center().x(), thumb.top())));
    value_->move(top.x() - value_->width() / 2, std::max(0, top.y() - value_->height()));
    value_->raise();
    value_->show();
}

void TrackbarWidget::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const Action action = key_action(key);
    if (action == SliderNoAction) {
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
            end_tracking(); // the dialog may end now
        }
        event->ignore();
        return;
    }
    if (release_timer_.isActive()) {
        release_timer_.stop();
        if (!last_release_.repeated_by(*event)) {
            end_tracking();
        }
    }
    held_key_ = key;
    triggerAction(action);
}

void TrackbarWidget::keyReleaseEvent(QKeyEvent* event) {
    if (key_action(event->key()) == SliderNoAction) {
        event->ignore();
    } else if (event->key() == held_key_ && !event->isAutoRepeat()) {
        last_release_.note(*event);
        if (event->nativeScanCode() == 0) { // a synthetic event
            end_tracking();
            return;
        }
        constexpr int kRepeatDelay = 30; // milliseconds in which an auto-repeat press may follow
        release_timer_.start(kRepeatDelay, this);
    }
}

void TrackbarWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) { // some styles move the thumb with other buttons
        event->ignore();
        return;
    }
    end_tracking();
    setFocus(Qt::MouseFocusReason);
    // As on Windows the whole height accepts clicks, not only the groove.
    const int at = event->position().toPoint().x();
    const QRect thumb = part(QStyle::SC_SliderHandle);
    if (at >= thumb.left() && at <= thumb.right()) {
        grip_ = at - thumb.left();
        setSliderDown(true);
        return;
    }
    constexpr int kFirst = 500; // milliseconds
    pointer_ = at;
    page_ = at < thumb.left() ? SliderPageStepSub : SliderPageStepAdd;
    page_timer_.start(kFirst, this);
    page_toward_pointer();
}

// Moves by whole pages and does not reverse after passing the pointer.
void TrackbarWidget::page_toward_pointer() {
    const QRect thumb = part(QStyle::SC_SliderHandle);
    if (page_ == SliderPageStepSub ? pointer_ < thumb.left() : pointer_ > thumb.right()) {
        triggerAction(page_);
    }
}

void TrackbarWidget::mouseMoveEvent(QMouseEvent* event) {
    pointer_ = event->position().toPoint().x();
    if (isSliderDown()) {
        const int position = position_at(pointer_ - grip_);
        if (position != sliderPosition()) {
            setSliderPosition(position);
        }
    }
}

void TrackbarWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        end_tracking();
    }
}

// The wheel moves only the slider with the focus, not the one under the pointer.
void TrackbarWidget::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) {
        event->ignore();
        return;
    }
    constexpr int kStep = 120;
    wheel_ += event->angleDelta().y();
    const int steps = wheel_ / kStep;
    wheel_ -= steps * kStep;
    for (int i = 0; i < std::abs(steps); ++i) {
        triggerAction(steps > 0 ? SliderSingleStepAdd : SliderSingleStepSub);
    }
    if (steps != 0 && !isSliderDown() && held_key_ == 0 && !page_timer_.isActive()) {
        end_tracking();
    }
    event->accept();
}

void TrackbarWidget::focusOutEvent(QFocusEvent* event) {
    wheel_ = 0;
    end_tracking();
    QSlider::focusOutEvent(event);
}

void TrackbarWidget::hideEvent(QHideEvent* event) {
    end_tracking();
    QSlider::hideEvent(event);
}

void TrackbarWidget::timerEvent(QTimerEvent* event) {
    if (event->timerId() == release_timer_.timerId()) {
        end_tracking();
    } else if (event->timerId() == page_timer_.timerId()) {
        constexpr int kNext = 100; // milliseconds
        page_timer_.start(kNext, this);
        page_toward_pointer();
    } else if (event->timerId() == value_timer_.timerId()) {
        if (!isSliderDown()) {
            value_timer_.stop();
            value_->hide();
        }
    } else {
        QSlider::timerEvent(event);
    }
}

TrackbarControl::TrackbarControl(HWND parent, int id, std::uint32_t style, QWidget* parent_widget)
    : Control(parent, id,
              new TrackbarWidget(
                  parent_widget, [this](WORD code) { notify(code); },
                  (style & kTrackbarTooltips) != 0)),
      slider_(static_cast<TrackbarWidget*>(widget())) {
    if ((style & kTrackbarAutoTicks) != 0) {
        slider_->setTickPosition(QSlider::TicksBelow);
    }
}

void TrackbarControl::notify(WORD code) {
    // As on Windows only thumb codes carry the position.
    const bool thumb = code == TB_THUMBPOSITION || code == TB_THUMBTRACK;
    const auto position = static_cast<unsigned>(slider_->sliderPosition());
    send_message(Control::parent(), WM_HSCROLL, MAKEWPARAM(code, thumb ? position : 0),
                 reinterpret_cast<LPARAM>(handle()));
}

LRESULT TrackbarControl::receive(UINT message, WPARAM wparam, LPARAM lparam) {
    const auto number = static_cast<int>(lparam);
    switch (message) {
    case TBM_GETPOS:
        return slider_->sliderPosition();
    case TBM_GETRANGEMIN:
        return slider_->minimum();
    case TBM_GETRANGEMAX:
        return slider_->maximum();
    case TBM_SETPOS:
        slider_->setValue(number);
        return 0;
    case TBM_SETRANGE:
        slider_->setRange(static_cast<std::int16_t>(LOWORD(static_cast<std::uintptr_t>(lparam))),
                          static_cast<std::int16_t>(HIWORD(static_cast<std::uintptr_t>(lparam))));
        return 0;
    case TBM_SETTICFREQ:
        slider_->setTickInterval(static_cast<int>(wparam));
        return 0;
    case TBM_SETLINESIZE: {
        const int previous = slider_->singleStep();
        slider_->setSingleStep(number);
        return previous;
    }
    case TBM_SETPAGESIZE: {
        const int previous = slider_->pageStep();
        slider_->setPageStep(number);
        return previous;
    }
    default:
        return Control::receive(message, wparam, lparam);
    }
}

} // namespace platform
