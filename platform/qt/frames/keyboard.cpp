#include "frames/keyboard.h"

#include "controls/controls.h"
#include "frames/frame.h"
#include "resources/resources.h"
#include "user/window.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace platform {

namespace {

constexpr std::pair<int, WORD> kVirtualKeys[] = {
    {Qt::Key_Backspace, 0x08}, {Qt::Key_Tab, 0x09},      {Qt::Key_Return, 0x0D},
    {Qt::Key_Enter, 0x0D},     {Qt::Key_Escape, 0x1B},   {Qt::Key_Space, 0x20},
    {Qt::Key_PageUp, 0x21},    {Qt::Key_PageDown, 0x22}, {Qt::Key_End, 0x23},
    {Qt::Key_Home, 0x24},      {Qt::Key_Left, 0x25},     {Qt::Key_Up, 0x26},
    {Qt::Key_Right, 0x27},     {Qt::Key_Down, 0x28},     {Qt::Key_Insert, 0x2D},
    {Qt::Key_Delete, 0x2E},    {Qt::Key_Backtab, 0x09},
};

// The Latin letter at a key's position, for keyboards with other alphabets: virtual key codes are
// always Latin. 0 for none. Takes X11 scan codes.
WORD latin_letter(quint32 scan_code) {
    constexpr struct {
        quint32 first;
        const char* letters;
    } kRows[] = {{24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};
    for (const auto& row : kRows) {
        if (scan_code >= row.first && scan_code < row.first + std::strlen(row.letters)) {
            return static_cast<WORD>(row.letters[scan_code - row.first]);
        }
    }
    return 0;
}

// The virtual key code of a key event; 0 for keys that no accelerator uses.
WORD virtual_key(const QKeyEvent& event) {
    const int key = event.key();
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) {
        return static_cast<WORD>(key); // the codes are equal
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return static_cast<WORD>(0x70 + key - Qt::Key_F1);
    }
    const auto* found =
        std::find_if(std::begin(kVirtualKeys), std::end(kVirtualKeys),
                     [key](const std::pair<int, WORD>& entry) { return entry.first == key; });
    if (found != std::end(kVirtualKeys)) {
        return found->second;
    }
    constexpr int kLatin = 0xFF;
    const bool other_letter = key > kLatin && key < Qt::Key_Escape;
    return other_letter ? latin_letter(event.nativeScanCode()) : WORD{0};
}

// The top-level window of a class, or the control in its client area, that receives a widget's
// keys; null for other widgets.
Window* key_target(const QWidget* widget) {
    const auto* frame = dynamic_cast<const Frame*>(widget->window());
    return frame != nullptr && !frame->is_menu_bar(widget) ? window_of_widget(widget) : nullptr;
}

bool matches(const Accelerator& entry, const MSG& message, const KeyStroke* key) {
    const Qt::KeyboardModifiers held =
        key != nullptr ? key->event->modifiers() : Qt::KeyboardModifiers();
    const bool alt = held.testFlag(Qt::AltModifier);
    if (message.wParam != entry.key || alt != entry.alt) {
        return false;
    }
    if (!entry.virtual_key) { // the character implies shift and control
        return message.message == WM_CHAR || message.message == WM_SYSCHAR;
    }
    return (message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN) &&
           held.testFlag(Qt::ShiftModifier) == entry.shift &&
           held.testFlag(Qt::ControlModifier) == entry.control;
}

UINT down_message(const QKeyEvent& event) {
    const bool menu = event.key() == Qt::Key_F10 && event.modifiers() == Qt::NoModifier;
    return menu || event.modifiers().testFlag(Qt::AltModifier) ? WM_SYSKEYDOWN : WM_KEYDOWN;
}

// The character that a key press produces; 0 for none.
WORD character(const QKeyEvent& event) {
    const QString text = event.text();
    if (!text.isEmpty()) {
        return text.at(0).unicode();
    }
    // Some keyboard layouts give no text with Alt.
    return event.key() < 0x80 ? static_cast<WORD>(event.key()) : WORD{0};
}

} // namespace

bool KeyFilter::eventFilter(QObject* watched, QEvent* event) {
    const bool press = event->type() == QEvent::KeyPress;
    if ((!press && event->type() != QEvent::KeyRelease) || is_answered(event) ||
        !watched->isWidgetType()) {
        return false;
    }
    if (!press) {
        last_release_.note(static_cast<const QKeyEvent&>(*event));
    }
    auto* widget = static_cast<QWidget*>(watched);
    Window* window = key_target(widget);
    if (window == nullptr || (!press && control_of(window->handle()) == nullptr)) {
        return false;
    }
    const auto& key_event = static_cast<const QKeyEvent&>(*event);
    auto key = std::make_shared<KeyStroke>();
    key->receiver = widget;
    key->event.reset(key_event.clone());
    const bool repeat = key_event.isAutoRepeat() || last_release_.repeated_by(key_event);
    const WORD flags = press && repeat ? KF_REPEAT : WORD{0};
    post_input(window->handle(), press ? down_message(key_event) : kKeyUp, virtual_key(key_event),
               MAKELPARAM(1, flags), std::move(key));
    return true;
}

} // namespace platform

using namespace platform;

int TranslateAcceleratorA(HWND handle, HACCEL accelerators, MSG* message) {
    const bool keyboard = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN ||
                          message->message == WM_CHAR || message->message == WM_SYSCHAR;
    Window* window = window_of(handle);
    if (!keyboard || window == nullptr || accelerators == nullptr) {
        return 0;
    }
    for (const Accelerator& entry : *accelerators_of(accelerators)) {
        if (matches(entry, *message, current_key().get())) {
            // As on Windows an accelerator key is consumed even when its menu entry is disabled or
            // its window is blocked by a dialog; only the command is not sent.
            if (window->enabled() && !menu_entry_grayed(*window, entry.id)) {
                send_message(handle, WM_COMMAND, MAKEWPARAM(entry.id, 1), 0);
            }
            return 1;
        }
    }
    return 0;
}

SHORT GetKeyState(int key) {
    const std::shared_ptr<KeyStroke> stroke = current_key();
    const Qt::KeyboardModifiers held =
        stroke != nullptr ? stroke->event->modifiers() : QGuiApplication::keyboardModifiers();
    return key == VK_SHIFT && held.testFlag(Qt::ShiftModifier) ? SHORT{-128} : SHORT{0};
}

BOOL TranslateMessage(const MSG* message) {
    const std::shared_ptr<KeyStroke> key = current_key();
    const bool system = message->message == WM_SYSKEYDOWN;
    if (key == nullptr || (!system && message->message != WM_KEYDOWN)) {
        return FALSE;
    }
    const WORD made = character(*key->event);
    if (made != 0) {
        post_first(message->hwnd, system ? WM_SYSCHAR : WM_CHAR, made, 0, key);
    }
    return TRUE;
}
