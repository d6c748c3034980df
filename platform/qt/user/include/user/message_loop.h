// The message queue, and the pump that fills it from the toolkit.
//
// The queue holds posted messages and user input in order. When it is empty the toolkit's events
// are processed, which may fill it. When it is still empty, windows with an invalid region get
// WM_PAINT. Otherwise the loop waits.
#pragma once

#include "platform/win32.h"

#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

#include <memory>

namespace platform {

// The key event behind a keyboard message. It is returned to the toolkit when no accelerator and no
// window procedure has handled it.
struct KeyStroke {
    QPointer<QWidget> receiver;
    std::unique_ptr<QKeyEvent> event;
};

void post(HWND handle, UINT message, WPARAM wparam, LPARAM lparam);

// Posts user input. It is dropped if a dialog blocks the window when the message is taken from the
// queue, such as input queued behind the command that opened the dialog.
void post_input(HWND handle, UINT message, WPARAM wparam, LPARAM lparam,
                std::shared_ptr<KeyStroke> key = nullptr);

// Posts at the front of the queue: a character directly follows its key.
void post_first(HWND handle, UINT message, WPARAM wparam, LPARAM lparam,
                std::shared_ptr<KeyStroke> key);

// Posts a mouse move. Replaces a mouse move of the same window at the end of the queue.
void post_mouse_move(HWND handle, WPARAM wparam, LPARAM lparam);

// A scope guard around calls in which the toolkit runs its widgets' handlers.
class ToolkitScope {
  public:
    ToolkitScope();
    ~ToolkitScope();
    ToolkitScope(const ToolkitScope&) = delete;
    ToolkitScope& operator=(const ToolkitScope&) = delete;
};

// Takes the key event of the message that is being dispatched; null for none or when it was taken.
// The caller handles it.
std::shared_ptr<KeyStroke> take_dispatched_key();

// The key event of the message that was last taken from the queue, or null.
std::shared_ptr<KeyStroke> current_key();

// True when the queue is empty and no window needs painting.
bool message_queue_idle();

} // namespace platform
