#include "platform/qt/trackbar.h"

#include "platform/qt/control_styles.h"
#include "platform/qt/resources.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QToolTip>
#include <QWheelEvent>

#include <utility>

namespace platform {

namespace {

using Action = QAbstractSlider::SliderAction;

// What a key does to the slider; SliderNoAction for keys that are not the slider's.
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

} // namespace

TrackbarWidget::TrackbarWidget(QWidget* parent, std::function<void(WORD)> notify, bool tooltips)
    : QSlider(Qt::Horizontal, parent), notify_(std::move(notify)), tooltips_(tooltips) {
    connect(this, &QAbstractSlider::actionTriggered, this, &TrackbarWidget::tell);
}

void TrackbarWidget::tell(int action) {
    notify_(action_code(action));
    if (action == SliderMove && isSliderDown()) {
        show_position();
    }
}

void TrackbarWidget::show_position() {
    if (tooltips_) {
        QToolTip::showText(mapToGlobal(QPoint(width() / 2, -height() / 2)),
                           QString::number(sliderPosition()), this);
    }
}

void TrackbarWidget::keyPressEvent(QKeyEvent* event) {
    const Action action = key_action(event->key());
    if (action == SliderNoAction) {
        event->ignore();
        return;
    }
    triggerAction(action);
}

void TrackbarWidget::keyReleaseEvent(QKeyEvent* event) {
    if (key_action(event->key()) == SliderNoAction) {
        event->ignore();
    } else if (!event->isAutoRepeat()) {
        notify_(TB_ENDTRACK);
    }
}

void TrackbarWidget::mousePressEvent(QMouseEvent* event) {
    // The whole height takes a click, as on Windows, not just the thin groove.
    QStyleOptionSlider option;
    initStyleOption(&option);
    const auto part = [&](QStyle::SubControl which) {
        return style()->subControlRect(QStyle::CC_Slider, &option, which, this);
    };
    QPointF at = event->position();
    if (!part(QStyle::SC_SliderHandle).contains(at.toPoint())) {
        at.setY(part(QStyle::SC_SliderGroove).center().y());
    }
    QMouseEvent moved(event->type(), at, event->globalPosition(), event->button(), event->buttons(),
                      event->modifiers());
    QSlider::mousePressEvent(&moved);
}

void TrackbarWidget::mouseReleaseEvent(QMouseEvent* event) {
    const bool dragged = isSliderDown();
    QSlider::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton) {
        return;
    }
    if (dragged) {
        notify_(TB_THUMBPOSITION);
    }
    notify_(TB_ENDTRACK);
}

void TrackbarWidget::wheelEvent(QWheelEvent* event) {
    constexpr int kStep = 120;
    wheel_ += event->angleDelta().y();
    const int steps = wheel_ / kStep;
    wheel_ -= steps * kStep;
    for (int i = 0; i < std::abs(steps); ++i) {
        triggerAction(steps > 0 ? SliderSingleStepSub : SliderSingleStepAdd);
    }
    if (steps != 0) {
        notify_(TB_ENDTRACK);
    }
    event->accept();
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
    // A thumb code brings its position along, as on Windows.
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
