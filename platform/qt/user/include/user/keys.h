// A key on its way back to the toolkit.
#pragma once

#include "user/message_loop.h"
#include "user/window.h"

namespace platform {

// A key that is let go (WM_KEYUP). Windows of classes never get one; it is queued for controls, so
// that it stays behind its press, which waits there for the accelerators.
inline constexpr UINT kKeyUp = 0x0101;

// Tells the releases that X11 invents while a key is held: each comes together with the next press.
// Where both are read at once the toolkit says so; else only their common time tells.
class LastRelease {
  public:
    void note(const QKeyEvent& release);
    bool repeated_by(const QKeyEvent& press) const;

  private:
    quint32 scan_code_ = 0;
    quint64 time_ = 0;
};

// Whether the toolkit has this event from answer_key(), and nobody else is to take it.
bool is_answered(const QEvent* event);

// The default processing of a key's message: hands the key that is being dispatched to the widget
// that it was meant for, or opens the menu of `window`. Nothing happens for other messages.
void answer_key(Window& window, UINT message, WPARAM wparam);

} // namespace platform
