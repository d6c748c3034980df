// Keys: from the toolkit to messages, accelerators, and back.
#pragma once

#include "platform/qt/message_loop.h"

#include <QObject>

namespace platform {

// Takes the key presses of our top-level windows out of the toolkit and queues them as messages, so
// that accelerators see them first. Keys of dialogs and open menus pass.
class KeyFilter : public QObject {
  public:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

// Hands a key press that no accelerator took to the widget that it was meant for.
void return_key(KeyStroke& key);

} // namespace platform
