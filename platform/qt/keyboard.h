// Keys: from the toolkit to messages, accelerators, and back.
#pragma once

#include "platform/qt/message_loop.h"

#include <QObject>

namespace platform {

// A key that is let go (WM_KEYUP). Windows of classes never get one; it is queued for controls, so
// that it stays behind its press, which waits there for the accelerators.
inline constexpr UINT kKeyUp = 0x0101;

// Takes the keys of our top-level windows and their controls out of the toolkit and queues them as
// messages, so that accelerators see them first. Keys of dialogs and open menus pass.
class KeyFilter : public QObject {
  public:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

// Hands a key that no accelerator took to the widget that it was meant for.
void return_key(KeyStroke& key);

} // namespace platform
