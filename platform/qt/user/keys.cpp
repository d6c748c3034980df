#include "user/keys.h"

#include <QCoreApplication>

#include <utility>

namespace platform {

namespace {

// The event that answer_key() is sending. Identified by its address instead of a flag: its handler
// may run a nested loop, whose key events are new ones.
const QEvent* answered = nullptr;

constexpr WORD kF10 = 0x79;

} // namespace

void LastRelease::note(const QKeyEvent& release) {
    scan_code_ = release.nativeScanCode();
    time_ = release.timestamp();
}

bool LastRelease::repeated_by(const QKeyEvent& press) const {
    // Keys that passed through a screen reader have no time.
    return scan_code_ != 0 && press.nativeScanCode() == scan_code_ && time_ != 0 &&
           press.timestamp() == time_;
}

bool is_answered(const QEvent* event) {
    return event == answered;
}

void answer_key(Window& window, UINT message, WPARAM wparam) {
    if (message != WM_KEYDOWN && message != WM_SYSKEYDOWN && message != kKeyUp) {
        return;
    }
    const std::shared_ptr<KeyStroke> key = take_dispatched_key();
    if (key == nullptr || key->receiver == nullptr) {
        return;
    }
    const ToolkitScope handlers;
    if (message == WM_SYSKEYDOWN && wparam == kF10) {
        window.open_menu();
        return;
    }
    const QEvent* outer = std::exchange(answered, key->event.get());
    QCoreApplication::sendEvent(key->receiver, key->event.get());
    answered = outer;
}

} // namespace platform
