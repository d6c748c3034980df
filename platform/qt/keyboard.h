// Keys: from the toolkit to messages, accelerators, and back.
#pragma once

#include "platform/qt/message_loop.h"

#include <QObject>

namespace platform {

class Window;

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

// Takes the keys of our top-level windows and their controls out of the toolkit and queues them as
// messages, so that accelerators see them first. Keys of dialogs and open menus pass.
class KeyFilter : public QObject {
  public:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    LastRelease last_release_;
};

// The default processing of a key's message: hands the key that is being dispatched to the widget
// that it was meant for, or opens the menu of `window`. Nothing happens for other messages.
void answer_key(const Window& window, UINT message, WPARAM wparam);

} // namespace platform
