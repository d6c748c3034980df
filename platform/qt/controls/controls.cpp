#include "controls/controls.h"

#include "user/keys.h"

#include <QRadioButton>

#include <algorithm>
#include <utility>

namespace platform {

Control::Control(HWND parent, int id, QWidget* widget)
    : parent_(parent), id_(id), widget_(widget) {}

LRESULT Control::receive(UINT message, WPARAM wparam, LPARAM) {
    answer_key(*this, message, wparam);
    return 0;
}

// The widget is deleted later, as one of its handlers may be running.
void Control::dismantle() {
    if (widget_ != nullptr) {
        widget_->hide();
        widget_->deleteLater();
    }
}

void Control::open_menu() {
    if (Window* window = window_of(parent_)) {
        window->open_menu();
    }
}

bool Control::enabled() const {
    const Window* window = window_of(parent_);
    return window == nullptr || window->enabled();
}

void Controls::add(std::shared_ptr<Control> control, bool begins_group) {
    if (begins_group || radio_buttons_ == nullptr) {
        radio_buttons_ = new QButtonGroup(holder_);
    }
    if (auto* radio = qobject_cast<QRadioButton*>(control->widget())) {
        radio_buttons_->addButton(radio);
    }
    keep_window(control);
    all_.push_back(std::move(control));
}

Control* Controls::find(int id) const {
    const auto found =
        std::find_if(all_.begin(), all_.end(), [id](const std::shared_ptr<Control>& control) {
            return control->id() == id && window_of(control->handle()) != nullptr;
        });
    return found != all_.end() ? found->get() : nullptr;
}

void Controls::forget() const {
    for (const std::shared_ptr<Control>& control : all_) {
        forget_window(control->handle());
    }
}

Control* control_of(HWND handle) {
    return dynamic_cast<Control*>(window_of(handle));
}

} // namespace platform
