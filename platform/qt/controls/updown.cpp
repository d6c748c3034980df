#include "controls/updown.h"

#include "controls/control_styles.h"

#include <QKeyEvent>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

// The default range of an up-down control. It is inverted on Windows (minimum 100, maximum 0), so
// the up arrow proposes a lower position.
constexpr int kLowest = 0;
constexpr int kHighest = 100;

// The step after an arrow was held for this time: 1, then 5, then 20, as on Windows.
int accelerated_step(qint64 milliseconds) {
    if (milliseconds < 2000) {
        return 1;
    }
    return milliseconds < 5000 ? 5 : 20;
}

} // namespace

UpDownWidget::UpDownWidget(QWidget* parent, std::function<void(int)> step)
    : QWidget(parent), step_(std::move(step)), up_(add_arrow(Qt::UpArrow, 1)),
      down_(add_arrow(Qt::DownArrow, -1)) {}

QToolButton* UpDownWidget::add_arrow(Qt::ArrowType arrow, int sign) {
    auto* button = new QToolButton(this);
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setAccessibleName(sign > 0 ? QStringLiteral("Increase") : QStringLiteral("Decrease"));
    connect(button, &QToolButton::pressed, this, [this, button, sign] {
        if (!button->isDown() || !held_.isValid()) {
            held_.start();
        }
        step_(sign * accelerated_step(held_.elapsed()));
    });
    connect(button, &QToolButton::released, this, [this, button] {
        if (!button->isDown()) {
            held_.invalidate();
        }
    });
    return button;
}

void UpDownWidget::name_after(const QString& field) {
    setAccessibleName(field);
    up_->setAccessibleName(QStringLiteral("Increase ") + field);
    down_->setAccessibleName(QStringLiteral("Decrease ") + field);
}

void UpDownWidget::resizeEvent(QResizeEvent*) {
    const int middle = height() / 2;
    up_->setGeometry(0, 0, width(), middle);
    down_->setGeometry(0, middle, width(), height() - middle);
}

void UpDownWidget::follow_keys_of(QWidget* field) {
    field->installEventFilter(this);
}

bool UpDownWidget::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const int key = static_cast<const QKeyEvent*>(event)->key();
    if (key != Qt::Key_Up && key != Qt::Key_Down) {
        return false;
    }
    step_(key == Qt::Key_Up ? 1 : -1);
    return true;
}

UpDownControl::UpDownControl(HWND parent, int id, std::uint32_t style, QWidget* parent_widget)
    : Control(parent, id, new UpDownWidget(parent_widget, [this](int amount) { step(amount); })),
      arrows_(static_cast<UpDownWidget*>(widget())), arrow_keys_((style & kUpDownArrowKeys) != 0) {}

void UpDownControl::step(int amount) {
    const std::shared_ptr<Window> alive = shared_from_this(); // the dialog may destroy this
    const int change = -amount;                               // the range is inverted
    NMUPDOWN proposal{{handle(), static_cast<UINT_PTR>(id()), UDN_DELTAPOS}, position_, change};
    const LRESULT refused = send_message(Control::parent(), WM_NOTIFY, static_cast<WPARAM>(id()),
                                         reinterpret_cast<LPARAM>(&proposal));
    if (refused == 0) {
        position_ = std::clamp(position_ + proposal.iDelta, kLowest, kHighest);
    }
}

LRESULT UpDownControl::receive(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case UDM_GETBUDDY:
        return reinterpret_cast<LRESULT>(buddy_);
    case UDM_SETBUDDY: {
        const HWND previous = std::exchange(buddy_, reinterpret_cast<HWND>(wparam));
        const Control* field = control_of(buddy_);
        if (field != nullptr && arrow_keys_) {
            arrows_->follow_keys_of(field->widget());
        }
        return reinterpret_cast<LRESULT>(previous);
    }
    default:
        return Control::receive(message, wparam, lparam);
    }
}

} // namespace platform
