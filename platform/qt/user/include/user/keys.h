// Returns key events to the toolkit when no window procedure handled them.
#pragma once

#include "user/message_loop.h"
#include "user/window.h"

namespace platform {

// WM_KEYUP. Queued for controls only: a release must stay behind its press, which is queued for the
// accelerators. Windows of classes never get one.
inline constexpr UINT kKeyUp = 0x0101;

// Recognises X11's auto-repeat, which reports a held key as pairs of a release and a press with the
// same timestamp. The toolkit recognises a pair only when it reads both events at once.
class LastRelease {
  public:
    void note(const QKeyEvent& release);
    bool repeated_by(const QKeyEvent& press) const;

  private:
    quint32 scan_code_ = 0;
    quint64 time_ = 0;
};

// Whether answer_key() has sent this event, which filters must then let pass.
bool is_answered(const QEvent* event);

// The default processing of key messages: sends the dispatched key event to its widget, or opens
// the menu of `window` (F10). Ignores other messages.
void answer_key(Window& window, UINT message, WPARAM wparam);

} // namespace platform
