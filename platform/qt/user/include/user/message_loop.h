// The message queue, and the pump that fills it from the toolkit.
//
// Messages are pulled. The queue holds what was posted and the user's input, in order; when it is
// empty the toolkit's events are processed, which may fill it; when there is still nothing, windows
// that wait for painting get WM_PAINT; and only then the loop sleeps.
#pragma once

#include "platform/win32.h"

#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

#include <memory>

namespace platform {

// The key event behind a keyboard message: the toolkit gets it back when no accelerator took it and
// no procedure answered it.
struct KeyStroke {
    QPointer<QWidget> receiver;
    std::unique_ptr<QKeyEvent> event;
};

void post(HWND handle, UINT message, WPARAM wparam, LPARAM lparam);

// Posts what a user did to a window. It is dropped when its turn comes and the window waits for a
// dialog by then: input that was waiting behind the command that opened it.
void post_input(HWND handle, UINT message, WPARAM wparam, LPARAM lparam,
                std::shared_ptr<KeyStroke> key = nullptr);

// Posts in front of everything else: a character comes right after the key that made it.
void post_first(HWND handle, UINT message, WPARAM wparam, LPARAM lparam,
                std::shared_ptr<KeyStroke> key);

// Posts a mouse move, in place of one that is last in the queue: only the newest place counts.
void post_mouse_move(HWND handle, WPARAM wparam, LPARAM lparam);

// Lives while the toolkit runs handlers of its widgets on our behalf.
class ToolkitScope {
  public:
    ToolkitScope();
    ~ToolkitScope();
    ToolkitScope(const ToolkitScope&) = delete;
    ToolkitScope& operator=(const ToolkitScope&) = delete;
};

// The key of the message that is being dispatched, once: whoever takes it decides what becomes of
// it. Null when there is none or it was taken.
std::shared_ptr<KeyStroke> take_dispatched_key();

// The key press behind the message that was taken from the queue last, or null.
std::shared_ptr<KeyStroke> current_key();

// True when nothing is queued and nothing waits for painting.
bool message_queue_idle();

} // namespace platform
