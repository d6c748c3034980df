#include "user/message_loop.h"

#include "user/window.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>

#include <algorithm>
#include <deque>
#include <optional>
#include <utility>

namespace platform {

namespace {

struct Queued {
    MSG message;
    bool input; // user input
    std::shared_ptr<KeyStroke> key;
};

// The message queue of the only thread. Never destroyed: the toolkit may still post during the
// destruction of static objects.
struct Queue {
    std::deque<Queued> waiting;
    std::optional<int> exit_code; // set by PostQuitMessage
    std::shared_ptr<KeyStroke> current_key;
    std::shared_ptr<KeyStroke> dispatched_key;
    int in_toolkit = 0; // nesting depth of widget handlers
};

Queue& queue() {
    static Queue& state = *new Queue;
    return state;
}

MSG make_message(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
    return {handle, message, wparam, lparam, 0, {0, 0}};
}

// Messages of destroyed windows are dropped, and so is input for windows blocked by a dialog.
bool undeliverable(const Queued& entry) {
    const HWND handle = entry.message.hwnd;
    const Window* window = window_of(handle);
    return window != nullptr ? entry.input && !window->enabled() : handle != nullptr;
}

bool take(MSG* message) {
    std::deque<Queued>& waiting = queue().waiting;
    while (!waiting.empty() && undeliverable(waiting.front())) {
        waiting.pop_front();
    }
    if (waiting.empty()) {
        return false;
    }
    *message = waiting.front().message;
    queue().current_key = std::move(waiting.front().key);
    waiting.pop_front();
    return true;
}

void process_events(QEventLoop::ProcessEventsFlags flags) {
    const ToolkitScope handlers;
    QCoreApplication::processEvents(flags);
}

// The messages made when the queue is empty: WM_QUIT first, then WM_PAINT.
bool make_message_when_empty(MSG* message) {
    queue().current_key = nullptr;
    if (queue().exit_code) {
        *message = make_message(nullptr, WM_QUIT,
                                static_cast<WPARAM>(*std::exchange(queue().exit_code, {})), 0);
        return true;
    }
    if (const Window* window = next_window_to_paint()) {
        *message = make_message(window->handle(), WM_PAINT, 0, 0);
        return true;
    }
    return false;
}

} // namespace

void post(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
    queue().waiting.push_back({make_message(handle, message, wparam, lparam), false, nullptr});
}

void post_input(HWND handle, UINT message, WPARAM wparam, LPARAM lparam,
                std::shared_ptr<KeyStroke> key) {
    queue().waiting.push_back(
        {make_message(handle, message, wparam, lparam), true, std::move(key)});
}

void post_first(HWND handle, UINT message, WPARAM wparam, LPARAM lparam,
                std::shared_ptr<KeyStroke> key) {
    queue().waiting.push_front(
        {make_message(handle, message, wparam, lparam), true, std::move(key)});
}

void post_mouse_move(HWND handle, WPARAM wparam, LPARAM lparam) {
    if (!queue().waiting.empty()) {
        MSG& last = queue().waiting.back().message;
        if (last.hwnd == handle && last.message == WM_MOUSEMOVE) {
            last.wParam = wparam;
            last.lParam = lparam;
            return;
        }
    }
    post_input(handle, WM_MOUSEMOVE, wparam, lparam);
}

ToolkitScope::ToolkitScope() {
    ++queue().in_toolkit;
}

ToolkitScope::~ToolkitScope() {
    --queue().in_toolkit;
}

std::shared_ptr<KeyStroke> current_key() {
    return queue().current_key;
}

std::shared_ptr<KeyStroke> take_dispatched_key() {
    return std::exchange(queue().dispatched_key, nullptr);
}

bool message_queue_idle() {
    return queue().waiting.empty() && next_window_to_paint() == nullptr;
}

} // namespace platform

using namespace platform;

BOOL GetMessageA(MSG* message, HWND, UINT, UINT) {
    while (!take(message)) {
        // Pending input comes before painting.
        process_events(QEventLoop::AllEvents);
        if (take(message) || make_message_when_empty(message)) {
            break;
        }
        // Deletes the widgets that were passed to deleteLater(), which the toolkit does only inside
        // exec(). Not in a loop nested in a widget's handler, as that widget may be among them.
        if (queue().in_toolkit == 0) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        process_events(QEventLoop::WaitForMoreEvents);
    }
    return message->message != WM_QUIT;
}

BOOL PeekMessageA(MSG* message, HWND, UINT first, UINT last, UINT remove) {
    process_events(QEventLoop::AllEvents);
    std::deque<Queued>& waiting = queue().waiting;
    const auto found = std::find_if(waiting.begin(), waiting.end(), [&](const Queued& entry) {
        return entry.message.message >= first && entry.message.message <= last &&
               !undeliverable(entry);
    });
    if (found == waiting.end()) {
        return FALSE;
    }
    *message = found->message;
    if ((remove & PM_REMOVE) != 0) {
        queue().current_key = std::move(found->key);
        waiting.erase(found);
    }
    return TRUE;
}

BOOL PostMessageA(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
    if (handle != nullptr && window_of(handle) == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    post(handle, message, wparam, lparam);
    QCoreApplication::postEvent(QCoreApplication::instance(), new QEvent(QEvent::None));
    return TRUE;
}

void PostQuitMessage(int exit_code) {
    queue().exit_code = exit_code;
}

LRESULT DispatchMessageA(const MSG* message) {
    // Restored afterwards: a procedure may run a nested loop before it handles its key.
    std::shared_ptr<KeyStroke> outer = std::exchange(queue().dispatched_key, current_key());
    const LRESULT result =
        send_message(message->hwnd, message->message, message->wParam, message->lParam);
    queue().dispatched_key = std::move(outer);
    return result;
}
